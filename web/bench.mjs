// Times the module of build/web in Node: milliseconds a message, with drawing. A time is the sum of
// the least times of all messages, divided by their number. script/bench has the native times.
//
//   node web/bench.mjs [STREAM...]      (default: the samples)

import {readFileSync} from "node:fs";
import {Decoder, messages} from "../build/web/zlibvideo.mjs";

const RUNS = 12;
const samples = ["desktop", "desktop-v2", "desktop-v2-reduced"];
const streams = process.argv.slice(2);
if (streams.length === 0) {
  streams.push(...samples.map((name) => new URL(`../samples/${name}.zvm`, import.meta.url).pathname));
}
for (const stream of streams) {
  const list = [...messages(readFileSync(stream))];
  const least = list.map(() => Infinity);
  for (let run = 0; run < RUNS; ++run) {
    const decoder = await Decoder.create();
    list.forEach((message, i) => {
      const begin = performance.now();
      decoder.decode(message);
      least[i] = Math.min(least[i], performance.now() - begin);
    });
  }
  const sum = least.reduce((total, time) => total + time, 0);
  console.log(`${stream}: ${(sum / list.length).toFixed(3)} ms`);
}
