// The player, and the page of `zlibvideo info --html`, in headless Chromium.

import assert from "node:assert/strict";
import {spawn, spawnSync} from "node:child_process";
import {mkdtempSync, readFileSync, rmSync, writeFileSync} from "node:fs";
import {createServer} from "node:http";
import {tmpdir} from "node:os";
import test from "node:test";

import {hashLine} from "./hash.mjs";
import {messages} from "../../build/web/zlibvideo.mjs";

const root = new URL("../../", import.meta.url);
const read = (name) => readFileSync(new URL(name, root));
const linesOf = (sample) => read(`samples/${sample}.hashes`).toString().trim().split("\n");
const skip = spawnSync("chromium", ["--version"]).error ? "chromium is not installed" : false;
const work = mkdtempSync(`${tmpdir()}/zlibvideo-pages-`);
test.after(() => rmSync(work, {recursive: true, maxRetries: 20}));

/** Runs in the page. The page then visits an address that tells the test of a problem. */
async function runSteps(steps, hashLine, server, lines, width) {
  const text = (id) => byId(id).textContent;
  const until = async (holds) => {
    for (const end = Date.now() + 20000; !holds();) {
      if (Date.now() > end) throw new Error(`${holds}: ${document.body.innerText}`);
      await new Promise((resume) => setTimeout(resume, 20));
    }
  };
  const page = {
    width, server, text, until,
    press: (key) => document.body.dispatchEvent(new KeyboardEvent("keydown", {key, bubbles: true})),
    says: (id, wanted) => until(() => text(id) === wanted),
    shows: (number) => until(() => {
      const {width, height} = byId("picture");
      if (!text("title").startsWith(`Message ${number}`) || width * height === 0) return false;
      const pen = new OffscreenCanvas(width, height).getContext("2d", {willReadFrequently: true});
      pen.drawImage(byId("picture"), 0, 0);
      const {data} = pen.getImageData(0, 0, width, height);
      const line = Math.min(number, lines.length) - 1;
      return hashLine(line, true, {width, height, pixels: data}) === lines[line];
    }),
  };
  const problem = await steps(page).then(() => "", (error) => `${error.message} ${error.stack}`);
  location.href = `${server}/problem?${encodeURIComponent(problem)}`;
}

/** Visits a page of this width, which may be less than that of any window. */
function visit({stdio: [, , , calls, answers]}, url, width) {
  const call = (method, params, sessionId) =>
    calls.write(`${JSON.stringify({id: 1, method, params, sessionId})}\0`);
  const metrics = {width, height: 900, deviceScaleFactor: 1, mobile: false};
  answers.on("data", (part) => {
    const session = /"sessionId":"(\w+)","targetInfo":{[^}]*"type":"page"/.exec(part)?.[1];
    if (!session) return;
    call("Emulation.setDeviceMetricsOverride", metrics, session);
    call("Page.navigate", {url}, session);
  });
  call("Target.setAutoAttach", {autoAttach: true, waitForDebuggerOnStart: false, flatten: true});
}

/** Opens the page, with `?src=` if there is a stream, and expects no problem and no console error. */
async function check({html, steps, lines, streams = {}, source, width = 1280}) {
  let log = "", tell;
  const problem = new Promise((resolve) => { tell = resolve; });
  const server = createServer(({url}, answer) => {
    if (url.startsWith("/problem?")) tell(decodeURIComponent(url.slice(9)));
    answer.setHeader("Access-Control-Allow-Origin", "*");
    answer.end(streams[url.slice(1)]);
  });
  await new Promise((resume) => server.listen(0, "127.0.0.1", resume));
  const address = `http://127.0.0.1:${server.address().port}`;
  writeFileSync(`${work}/page.html`, `${html}<script type="module">
    (${runSteps})(${steps}, ${hashLine}, "${address}", ${JSON.stringify(lines)}, ${width})</script>`);
  const browser = spawn("chromium", [
    "--headless", "--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-sync",
    "--disable-background-networking", "--disable-component-update", "--enable-logging=stderr",
    `--user-data-dir=${work}/profile`, "--remote-debugging-pipe", "about:blank",
  ], {stdio: ["ignore", "ignore", "pipe", "pipe", "pipe"]});
  visit(browser, `file://${work}/page.html${source ? `?src=${address}/${source}` : ""}`, width);
  browser.stderr.on("data", (part) => { log += part; });
  browser.on("exit", () => tell(`chromium ended: ${log}`));
  const found = await problem;
  browser.kill();
  await new Promise((resolve) => browser.once("close", resolve));
  server.close();
  assert.equal(found, "");
  assert.deepEqual(log.match(/.*CONSOLE.*/g), null);
}

test("the player: keys, slider, plot, speed, saving, dropped files", {skip}, async () => {
  const bytes = read("samples/desktop.zvm"), [first, second] = messages(bytes);
  const end = 6 + first.length + second.length;
  const damaged = Buffer.concat([bytes.subarray(0, end), Buffer.from([0, 0, 8]), first.subarray(0, 5),
                                 Buffer.from([0, 9, 1]), bytes.subarray(end, end + 100)]);
  const steps = async ({width, server, text, press, says, shows, until}) => {
    await shows(1);
    for (const [key, number] of [["ArrowRight", 2], ["ArrowLeft", 1], ["End", 28], ["Home", 1]]) {
      press(key);
      await shows(number);
    }
    for (const number of [28, 15, 1, 15]) {
      byId("slider").value = number - 1;
      byId("slider").dispatchEvent(new Event("input"));
      await shows(number);
    }
    await says("hint", "187 of 240 blocks changed, blocks of 64 × 64");
    let saved = "";
    HTMLAnchorElement.prototype.click = function () { saved = this.download; };
    for (const key of ["ArrowRight", "s"]) press(key);  // the picture is still of message 15
    await until(() => saved === "desktop-15.png");
    press("+");
    await says("speed", "20 fps");
    press(" ");
    await shows(28);
    await says("play", "Play");
    const bars = byId("bars").getBoundingClientRect();
    const place = {clientX: bars.left + bars.width * 14.5 / 28, clientY: bars.top + 5};
    byId("bars").dispatchEvent(new MouseEvent("click", place));
    await shows(15);
    await until(() => innerWidth === width && document.documentElement.scrollWidth <= width);

    const drop = (name, part) => {
      const dataTransfer = new DataTransfer();
      dataTransfer.items.add(new File([part], name));
      document.body.dispatchEvent(new DragEvent("drop", {dataTransfer, bubbles: true}));
    };
    drop("empty.zvm", "");
    await says("problem", "empty.zvm is empty.");
    for (const key of ["End", "s", " "]) press(key);
    await until(() => text("summary") + text("title") + text("play") === "Play");
    drop("damaged.zvm", await (await fetch(`${server}/damaged.zvm`)).blob());
    await says("problem", "damaged.zvm: the file ends within message 4");
    await shows(1);
    press("End");
    await says("line", "This message failed, the picture is as before. 8 bytes");
    for (const key of ["Home", "f"]) press(key);
    await says("title", "Message 3 of 3");
    const whole = await (await fetch(`${server}/desktop.zvm`)).bytes();
    Blob.prototype.stream = () => new ReadableStream({start: (never) => never.enqueue(whole)});
    drop("endless.zvm", "");
    await says("summary", "28 messages");
    ArrayBuffer.prototype.slice = () => { throw new RangeError("no memory"); };
    press("End");
    await shows(28);
    drop("desktop.zvm", "");
    await until(() => text("problem").startsWith("The decoder cannot start: no memory."));
  };
  const html = read("build/web/player.html");
  const streams = {"desktop.zvm": bytes, "damaged.zvm": damaged};
  for (const width of [1280, 800, 390])
    await check({html, steps, lines: linesOf("desktop"), streams, source: "desktop.zvm", width});
});

test("the page of info --html: keys, address, failures", {skip}, async () => {
  const stream = `${work}/movie.zvm`, page = `${work}/report.html`;
  // Behind the sample: a message whose only record reaches past its end, and ten empty messages.
  const failing = [0, 0, 10, 0x16, 0x30, 0x40, 0x30, 0x40, 0, 0, 5, 1, 2];
  const bytes = Buffer.concat([read("samples/desktop-v2.zvm"), Buffer.from(failing), Buffer.alloc(30)]);
  writeFileSync(stream, bytes);
  const program = spawnSync(process.env.ZLIBVIDEO_PROGRAM,
                            ["info", stream, "--html", page, "--picture-limit", "512"]);
  assert.equal(program.status, 2, program.stderr?.toString());
  const steps = async ({text, press, says, shows, until}) => {
    await shows(1);
    await says("name", "movie.zvm");
    press("ArrowRight");
    await shows(2);
    await until(() => location.hash === "#2");
    location.hash = "#3";
    await shows(3);
    press("f");
    await shows(29);
    await says("line", "block 0,0: its record reaches past the end of the message");
    press("End");
    await until(() => text("line").startsWith("messages 30 to 39, from byte "));
  };
  const html = readFileSync(page, "utf8");
  assert.doesNotMatch(html, /(src|href)="?(https?:)?\/\//);
  await check({html, steps, lines: linesOf("desktop-v2")});
});
