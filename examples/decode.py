"""Decodes a file of messages and writes the last picture to standard output, as a PAM file.

    python3 decode.py LIBRARY samples/desktop.zvm >picture.pam

LIBRARY is libzlibvideo_c.so."""

import ctypes
import sys


class Picture(ctypes.Structure):  # the first fields of zlibvideo_picture
    _fields_ = [("pixels", ctypes.POINTER(ctypes.c_ubyte)), ("row_length", ctypes.c_size_t),
                ("width", ctypes.c_int32), ("height", ctypes.c_int32)]


def messages(file):
    while len(length := file.read(3)) == 3:
        yield file.read(int.from_bytes(length, "big"))


library = ctypes.CDLL(sys.argv[1])
library.zlibvideo_open.restype = ctypes.c_void_p
library.zlibvideo_open.argtypes = [ctypes.c_size_t]
library.zlibvideo_decode.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_size_t]
library.zlibvideo_get_picture.restype = ctypes.POINTER(Picture)
library.zlibvideo_get_picture.argtypes = library.zlibvideo_close.argtypes = [ctypes.c_void_p]

decoder = library.zlibvideo_open(256 << 20)  # bytes at most
with open(sys.argv[2], "rb") as file:
    failed = sum(not library.zlibvideo_decode(decoder, m, len(m)) for m in messages(file))
picture = library.zlibvideo_get_picture(decoder).contents
pixels = ctypes.string_at(picture.pixels, picture.row_length * picture.height)
sys.stdout.buffer.write(b"P7\nWIDTH %d\nHEIGHT %d\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n"
                        % (picture.width, picture.height) + pixels)
library.zlibvideo_close(decoder)
sys.exit(2 if failed else 0)
