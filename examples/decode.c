// Decodes a file of messages and writes the last picture to standard output, as a PAM file.
//
//   example_c samples/desktop.zvm >picture.pam

#include <stdio.h>
#include <stdlib.h>

#include <zlibvideo/capi/zlibvideo.h>

enum { kEnd = -1, kCutOff = -2 };

// Reads a message into `*message` and returns its bytes, or the reason why there is no message.
static long ReadMessage(FILE* file, unsigned char** message) {
  unsigned char length[3];  // most significant byte first
  const size_t got = fread(length, 1, sizeof(length), file);
  if (got != sizeof(length)) return got == 0 ? kEnd : kCutOff;
  const size_t size = (size_t)length[0] << 16 | (size_t)length[1] << 8 | length[2];
  unsigned char* const larger = realloc(*message, size + 1);
  if (larger == NULL) return kCutOff;
  *message = larger;
  return fread(larger, 1, size, file) == size ? (long)size : kCutOff;
}

int main(int argc, char** argv) {
  FILE* const file = argc == 2 ? fopen(argv[1], "rb") : NULL;
  zlibvideo_decoder* const decoder = zlibvideo_open((size_t)256 << 20);  // bytes at most
  if (file == NULL || decoder == NULL) {
    fprintf(stderr, "usage: %s FILE.zvm >PICTURE.pam\n", argv[0]);
    return 1;
  }
  int failed = 0;
  unsigned char* message = NULL;
  long size = 0;
  while ((size = ReadMessage(file, &message)) >= 0) {
    failed += !zlibvideo_decode(decoder, message, (size_t)size);
  }
  if (size == kCutOff) ++failed;
  const zlibvideo_picture* const picture = zlibvideo_get_picture(decoder);
  printf("P7\nWIDTH %d\nHEIGHT %d\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n",
         (int)picture->width, (int)picture->height);
  for (int row = 0; row < picture->height; ++row) {
    fwrite(picture->pixels + (size_t)row * picture->row_length, 4, (size_t)picture->width, stdout);
  }
  fprintf(stderr, "%d messages failed\n", failed);
  free(message);
  zlibvideo_close(decoder);
  fclose(file);
  return failed == 0 ? 0 : 2;
}
