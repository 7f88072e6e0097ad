/** The line of `zlibvideo decode --format hash`, whose CRC-32 is that of pixels with blue first.
 *  Refers to nothing outside: it also runs in a page. */
export function hashLine(index, decoded, {width, height, pixels}) {
  const table = Int32Array.from({length: 256}, (_, crc) => {
    for (let bit = 0; bit < 8; ++bit) crc = crc >>> 1 ^ (crc & 1) * 0xEDB88320;
    return crc;
  });
  let crc = -1;
  for (let i = 0; i < pixels.length; ++i) {
    crc = table[(crc ^ pixels[i % 2 === 0 ? i ^ 2 : i]) & 0xFF] ^ crc >>> 8;
  }
  const hex = (~crc >>> 0).toString(16).padStart(8, "0");
  return `${index} ${decoded ? 1 : 0} ${width}x${height} ${hex}`;
}
