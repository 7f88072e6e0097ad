// The decoder for pages and for Node: an ES module around zlibvideo.wasm.

const LENGTH_BYTES = 3;  // before each message of a file, most significant byte first
const NO_LIMIT = 0xFFFFFFFF;
const PAGE_BYTES = 65536;
const AREA_FIELDS = 4;
const HEADER_BYTES = 7;  // of a message: all that its memory depends on

/**
 * zlibvideo.wasm: its bytes, its address relative to this file, a response with its bytes, or the compiled module.
 * @typedef {BufferSource | URL | string | Response | Promise<Response> | WebAssembly.Module} Source
 */

/**
 * A rectangle in pixels of the picture. Row 0 is the top row.
 * @typedef {{left: number, top: number, width: number, height: number}} Area
 */

/** @type {Promise<WebAssembly.Module> | undefined} */
let moduleBesideThisFile;

/** @param {Source} source @returns {Promise<WebAssembly.Module>} */
async function compile(source) {
  source = await source;
  if (source instanceof WebAssembly.Module) return source;
  if (typeof source === "string" || source instanceof URL) {
    const url = new URL(source, import.meta.url);
    if (url.protocol === "file:" && globalThis.process?.versions?.node) {
      const {readFile} = await import("node:fs/promises");
      source = await readFile(url);
    } else {
      source = await fetch(url);
    }
  }
  if (source instanceof Response) {
    if (!source.ok) throw new Error(`${source.url}: ${source.status} ${source.statusText}`);
    source = await source.arrayBuffer();
  }
  return WebAssembly.compile(source);
}

/** Decodes one stream, and keeps its picture. Decoders share nothing. */
export class Decoder {
  #exports;
  #handle;

  /** Use `Decoder.create`. @param {WebAssembly.Instance} instance @param {number} memoryLimit */
  constructor(instance, memoryLimit) {
    this.#exports = instance.exports;
    this.#exports._initialize();
    this.#handle = this.#exports.zlibvideo_open(Math.min(memoryLimit, NO_LIMIT));
    if (this.#handle === 0) throw new RangeError("no memory for a decoder");
  }

  /**
   * @param {Source} [source] By default zlibvideo.wasm beside this file.
   * @param {{memoryLimit?: number}} [options] Messages fail if `memoryBound` is greater than
   *     `memoryLimit` bytes. By default there is no limit.
   * @returns {Promise<Decoder>} Rejects if the module cannot be fetched or compiled.
   */
  static async create(source, {memoryLimit = NO_LIMIT} = {}) {
    if (source === undefined && !moduleBesideThisFile) {
      moduleBesideThisFile = compile("zlibvideo.wasm");
      // After a failure, the next call tries again.
      moduleBesideThisFile.catch(() => moduleBesideThisFile = undefined);
    }
    const module = await (source === undefined ? moduleBesideThisFile : compile(source));
    return new Decoder(await WebAssembly.instantiate(module), memoryLimit);
  }

  /**
   * Decodes a message and draws the picture.
   * @param {Uint8Array} message Without the length that precedes it in a file.
   * @returns {boolean} False if the message fails: it is damaged, over the limit, or memory ran
   *     out. The picture then is as before, and the next message can be decoded. If its size
   *     changed and memory ran out, there is no picture.
   */
  decode(message) {
    return this.#with(message, this.#exports.zlibvideo_decode) === 1;
  }

  /**
   * @param {Uint8Array} message
   * @returns {number} The most bytes that the decoder holds during and after this message: the
   *     blocks, and the larger of the last and the new picture. 0 if the message has no valid header.
   */
  memoryBound(message) {
    const header = message.subarray(0, HEADER_BYTES);
    return this.#with(header, this.#exports.zlibvideo_memory_bound) >>> 0;
  }

  /** Pixels. All sizes are 0 before the first picture. @type {number} */
  get width() {
    return this.#picture().width;
  }

  /** Pixels. @type {number} */
  get height() {
    return this.#picture().height;
  }

  /**
   * Pixels of a block. The blocks at the right and at the top of the picture may be cut.
   * @type {{width: number, height: number}}
   */
  get blockSize() {
    const {blockWidth, blockHeight} = this.#picture();
    return {width: blockWidth, height: blockHeight};
  }

  /** Whether the stream has filled every block. Gaps are black. @type {boolean} */
  get complete() {
    return this.#picture().complete;
  }

  /**
   * Rows from the top without gaps, 4 bytes a pixel: red, green, blue, opacity. A view of the
   * decoder's memory, valid until the next call of any function of the decoder.
   * @type {Uint8ClampedArray}
   */
  get pixels() {
    const {address, width, height} = this.#picture();
    return new Uint8ClampedArray(this.#exports.memory.buffer, address, width * height * 4);
  }

  /**
   * The least area around the blocks that the last `decode` drew. Empty if it drew nothing.
   * @type {Area}
   */
  get changed() {
    return this.#picture().changed;
  }

  /** The blocks that the last `decode` drew. @type {Area[]} */
  get changedBlocks() {
    const {blocks, count} = this.#picture();
    const fields = new Uint32Array(this.#exports.memory.buffer, blocks, count * AREA_FIELDS);
    return Array.from({length: count}, (_, i) => areaAt(fields, i * AREA_FIELDS));
  }

  /**
   * Copies the state of the decoder, about `memoryBound` bytes.
   * @returns {ArrayBuffer}
   */
  snapshot() {
    return this.#exports.memory.buffer.slice(0, this.#exports.sbrk(0));
  }

  /**
   * Returns the decoder to the state of the snapshot, memory limit included. The snapshot is only
   * read.
   * @param {ArrayBuffer} snapshot Of any decoder of the same module.
   */
  restore(snapshot) {
    const {memory} = this.#exports;
    const missing = snapshot.byteLength - memory.buffer.byteLength;
    if (missing > 0) memory.grow(Math.ceil(missing / PAGE_BYTES));
    new Uint8Array(memory.buffer).set(new Uint8Array(snapshot));
  }

  /** Releases the memory. Any other call then throws. */
  close() {
    this.#exports = undefined;
  }

  #with(message, operation) {
    if (!this.#exports) throw new Error("the decoder is closed");
    const {malloc, free, memory} = this.#exports;
    const address = malloc(message.length);
    if (address === 0) return operation(this.#handle, 0, 0);  // fails, and changes no block
    new Uint8Array(memory.buffer).set(message, address);
    const result = operation(this.#handle, address, message.length);
    free(address);
    return result;
  }

  /** The fields of `zlibvideo_picture`, which are 4 bytes each. */
  #picture() {
    const at = this.#exports.zlibvideo_get_picture(this.#handle);
    const fields = new Uint32Array(this.#exports.memory.buffer, at, 9 + AREA_FIELDS);
    const [address, , width, height, blockWidth, blockHeight, complete, count, blocks] = fields;
    return {address, width, height, blockWidth, blockHeight, complete: complete === 1, count,
            blocks, changed: areaAt(fields, 9)};
  }
}

/** The fields of a `zlibvideo_area`, which are never negative. */
function areaAt(fields, i) {
  return {left: fields[i], top: fields[i + 1], width: fields[i + 2], height: fields[i + 3]};
}

/** The bytes of the first message and its length. 3 while the length is incomplete. */
function sizeOfFirst(bytes) {
  if (bytes.length < LENGTH_BYTES) return LENGTH_BYTES;
  return LENGTH_BYTES + (bytes[0] << 16 | bytes[1] << 8 | bytes[2]);
}

function joined(pieces) {
  if (pieces.length === 1) return pieces[0];
  const bytes = new Uint8Array(pieces.reduce((sum, piece) => sum + piece.length, 0));
  let end = 0;
  for (const piece of pieces) {
    bytes.set(piece, end);
    end += piece.length;
  }
  return bytes;
}

const cutOff = (number) => new Error(`the file ends within message ${number}`);

/**
 * The messages of a whole file. If the file ends within a message, throws after the last whole
 * message.
 * @param {Uint8Array} bytes
 * @returns {Generator<Uint8Array>} Views of `bytes`.
 */
export function* messages(bytes) {
  let rest = bytes;
  for (let number = 1; rest.length > 0; ++number) {
    const size = sizeOfFirst(rest);
    if (rest.length < size) throw cutOff(number);
    yield rest.subarray(LENGTH_BYTES, size);
    rest = rest.subarray(size);
  }
}

/**
 * The messages of a stream of bytes, such as the body of a response or `file.stream()`. Yields a
 * message as soon as it is complete. Throws as `messages` does.
 * @param {ReadableStream<Uint8Array>} stream Cancelled if the caller stops before its end.
 * @returns {AsyncGenerator<Uint8Array>}
 */
export async function* messagesFrom(stream) {
  const reader = stream.getReader();
  let [pieces, size, needed, number] = [[], 0, LENGTH_BYTES, 1];
  try {
    for (;;) {
      const {done, value} = await reader.read();
      if (done) break;
      pieces.push(value);
      size += value.length;
      if (size < needed) continue;
      let rest = joined(pieces);
      while ((needed = sizeOfFirst(rest)) <= rest.length) {
        yield rest.subarray(LENGTH_BYTES, needed);
        rest = rest.subarray(needed);
        ++number;
      }
      [pieces, size] = [[rest], rest.length];
    }
    if (size > 0) throw cutOff(number);
  } finally {
    await reader.cancel();
  }
}
