// The module, compared with the program, which script/check-web names in ZLIBVIDEO_PROGRAM.

import assert from "node:assert/strict";
import {spawnSync} from "node:child_process";
import {readdirSync, readFileSync} from "node:fs";
import test from "node:test";

import {hashLine} from "./hash.mjs";
import {Decoder, messages, messagesFrom} from "../../build/web/zlibvideo.mjs";

const root = new URL("../../", import.meta.url);
const read = (name) => new Uint8Array(readFileSync(new URL(name, root)));
const linesOf = (sample) => Buffer.from(read(`samples/${sample}.hashes`)).toString().trim().split("\n");
const wasm = read("build/web/zlibvideo.wasm");

/** The messages, and the text of the error after them. */
function take(bytes) {
  const taken = [];
  try {
    for (const message of messages(bytes)) taken.push(message);
  } catch ({message}) {
    return {taken, problem: message};
  }
  return {taken, problem: null};
}

function decodeAll(decoder, list, first = 0) {
  return list.map((message, i) => hashLine(first + i, decoder.decode(message), decoder));
}

test("samples and damaged streams decode as natively", async () => {
  for (const name of ["desktop", "desktop-v2", "desktop-v2-reduced"]) {
    const {taken} = take(read(`samples/${name}.zvm`));
    assert.deepEqual(decodeAll(await Decoder.create(wasm), taken), linesOf(name), name);
  }
  for (const name of readdirSync(new URL("fuzz/corpus/stream/", root))) {
    const file = new URL(`fuzz/corpus/stream/${name}`, root).pathname;
    const options = ["decode", file, "--quiet", "--format", "hash", "-o", "-"];
    const {stdout, status} = spawnSync(process.env.ZLIBVIDEO_PROGRAM, options);
    assert.ok(status <= 2, name);
    const lines = decodeAll(await Decoder.create(wasm), take(readFileSync(file)).taken);
    assert.equal(lines.join("\n"), stdout.toString().trim(), name);
  }
});

test("messages of a file that is cut off, and of pieces of any size", async () => {
  const bytes = read("samples/desktop-v2-reduced.zvm");
  const [first, second] = take(bytes).taken.map(({length}) => length + 3);
  for (const [length, count] of [[2, 0], [first - 1, 0], [first + second + 1, 2]]) {
    const {taken, problem} = take(bytes.subarray(0, length));
    assert.deepEqual([taken.length, problem], [count, `the file ends within message ${count + 1}`]);
  }
  assert.deepEqual([take(bytes.subarray(0, first)).problem, take(bytes).problem], [null, null]);

  const cut = bytes.subarray(0, 300000), {taken, problem} = take(cut);
  for (const size of [1, 7, 65536]) {
    let at = 0;
    const stream = new ReadableStream({pull(controller) {
      if (at >= cut.length) return controller.close();
      controller.enqueue(cut.subarray(at, at += size));
    }});
    const got = [];
    await assert.rejects(async () => {
      for await (const message of messagesFrom(stream)) got.push(message);
    }, {message: problem});
    assert.deepEqual(got, taken);
  }
  let cancelled = false;
  const endless = new ReadableStream({pull: (controller) => controller.enqueue(bytes),
                                      cancel: () => { cancelled = true; }});
  for await (const message of messagesFrom(endless)) if (message) break;
  assert.ok(cancelled);
});

test("a decoder returns to a snapshot, and its memory does not grow", async () => {
  const list = take(read("samples/desktop-v2.zvm")).taken, expected = linesOf("desktop-v2");
  const decoder = await Decoder.create(wasm), other = await Decoder.create(wasm);
  const start = decoder.snapshot();
  decodeAll(decoder, list.slice(0, 10));
  const middle = decoder.snapshot();
  decodeAll(decoder, list.slice(10));
  const size = decoder.snapshot().byteLength;
  assert.deepEqual(decodeAll(decoder, list), expected);
  assert.equal(decoder.snapshot().byteLength, size);
  for (const target of [decoder, other, decoder]) {
    target.restore(middle);
    assert.equal(hashLine(9, true, target), expected[9]);
    assert.deepEqual(decodeAll(target, list.slice(10), 10), expected.slice(10));
    target.restore(start);
    assert.equal(target.width, 0);
    assert.deepEqual(decodeAll(target, list), expected);
  }
  assert.equal(decoder.snapshot().byteLength, size);
});

/** The module with a limit of its memory, in pages. Its section 5 has flags and the minimum. */
function withMostPages(pages) {
  const at = wasm.findIndex((_, i) => [5, 3, 1, 0].every((byte, j) => wasm[i + j] === byte));
  const memory = [5, 5, 1, 1, wasm[at + 4], pages & 127 | 128, pages >> 7];
  return Uint8Array.from([...wasm.subarray(0, at), ...memory, ...wasm.subarray(at + 5)]);
}

test("a message without memory fails", async () => {
  const [message] = messages(read("samples/desktop.zvm"));
  const results = [];
  for (let pages = 4; pages < 256; pages += 12) {
    const decoder = await Decoder.create(withMostPages(pages));
    assert.equal(decoder.decode(new Uint8Array(1 << 24)), false);
    results.push(decoder.decode(message));
    assert.equal(decoder.width, decoder.decode(message) ? 1280 : 0);
  }
  assert.ok(results.indexOf(true) > 3 && !results.slice(results.indexOf(true)).includes(false));

  assert.ok((await Decoder.create(wasm, {memoryLimit: Infinity})).decode(message));
  const memoryLimit = (await Decoder.create(wasm)).memoryBound(message);
  assert.equal((await Decoder.create(wasm, {memoryLimit})).decode(message), true);
  const limited = await Decoder.create(wasm, {memoryLimit: memoryLimit - 1});
  assert.equal(limited.decode(message), false);
  assert.equal(limited.memoryBound(message.subarray(0, 6)), 0);
});

test("the module is small, imports nothing, and comes from any source", async () => {
  assert.deepEqual(WebAssembly.Module.imports(new WebAssembly.Module(wasm)), []);
  assert.ok(wasm.length <= 60 * 1024, `${wasm.length} bytes`);
  const [message] = messages(read("samples/desktop.zvm"));
  const url = new URL("build/web/zlibvideo.wasm", root);
  for (const source of [undefined, url, url.href, new Response(wasm), WebAssembly.compile(wasm)]) {
    const decoder = await Decoder.create(source);
    assert.ok(decoder.decode(message) && decoder.complete && decoder.changedBlocks.length === 240);
    assert.deepEqual(decoder.changedBlocks[0], {left: 0, top: 656, width: 64, height: 64});
    assert.deepEqual(decoder.changedBlocks[239], {left: 1216, top: 0, width: 64, height: 16});
    assert.deepEqual(decoder.changed, {left: 0, top: 0, width: 1280, height: 720});
    decoder.close();
    assert.throws(() => decoder.decode(message));
  }
});
