"use strict";
const byId = (id) => document.getElementById(id);
const data = (id) => JSON.parse(byId(id).textContent);
const stream = data("stream"), messages = data("messages"), trouble = data("trouble");
const kinds = stream.kinds;

// ---- Words

function humanBytes(bytes) {
  if (bytes < 1024) return `${bytes} B`;
  let value = bytes / 1024;
  for (const unit of ["KiB", "MiB", "GiB"]) {
    if (value < 1023.95) return `${value.toFixed(1)} ${unit}`;
    value /= 1024;
  }
  return `${value.toFixed(1)} TiB`;
}
const percent = (part, whole) => `${whole ? (100 * part / whole).toFixed(1) : "0.0"} %`;
const counted = (count, noun) => `${count} ${noun}${count === 1 ? "" : "s"}`;
/** From 1, as people count. */
const numberOf = (message) => message.index + 1;
const codec = (type) => type === 3 ? "version 1" : type === 6 ? "version 2" : "unknown version";
function element(tag, text, attributes = {}) {
  const made = document.createElement(tag);
  if (text !== undefined) made.textContent = text;
  for (const [name, value] of Object.entries(attributes)) made.setAttribute(name, value);
  return made;
}
function svg(tag, attributes) {
  const made = document.createElementNS("http://www.w3.org/2000/svg", tag);
  for (const [name, value] of Object.entries(attributes)) made.setAttribute(name, value);
  return made;
}

// ---- Colours: a hue for each way of coding a block, stripes for its colour-reduced form

const isReduced = (kind) => kinds[kind].reduced;
const hue = (kind) => kinds[kind].form;
const color = (name) => getComputedStyle(document.documentElement).getPropertyValue(`--${name}`).trim();
const emptyKind = kinds.findIndex((kind) => kind.form === "empty");
const isChange = (kind) => !["empty", "skipped"].includes(kinds[kind].form);
const stripes = (kind) => isReduced(kind)
  ? `repeating-linear-gradient(135deg, transparent 0 3px, var(--stripe) 3px 6px)` : "none";
function swatch(kind) {
  const box = element("span", isChange(kind) ? kinds[kind].letter : "", {class: "swatch"});
  box.style.backgroundColor = `var(--${hue(kind)})`;
  box.style.backgroundImage = stripes(kind);
  return box;
}

// ---- Timeline

const plotHeight = 150, axisHeight = 40, leftMargin = 64;
let barWidth = 8;

function drawTimeline() {
  const chart = byId("timeline");
  const room = byId("scroll").clientWidth - leftMargin - 8;
  barWidth = Math.max(4, Math.min(44, room / Math.max(1, messages.length)));
  const width = leftMargin + Math.max(room, barWidth * messages.length) + 8;
  chart.setAttribute("width", width);
  chart.setAttribute("height", plotHeight + axisHeight + 10);
  chart.setAttribute("viewBox", `0 -10 ${width} ${plotHeight + axisHeight + 10}`);
  chart.setAttribute("aria-valuemax", Math.max(1, messages.length));
  chart.replaceChildren(stripePattern());
  const most = messages.reduce((largest, message) => Math.max(largest, message.bytes), 1);
  const log = byId("log").checked;
  const height = (bytes) =>
    plotHeight * (log ? Math.log1p(bytes) / Math.log1p(most) : bytes / most);
  for (const value of gridValues(most, log)) {
    const y = plotHeight - height(value);
    chart.append(svg("line", {class: "grid", x1: leftMargin, x2: width, y1: y, y2: y}));
    label(chart, leftMargin - 8, y + 4, humanBytes(value), "end");
  }
  chart.append(svg("rect", {class: "here", id: "here", y: -10, width: barWidth,
                            height: plotHeight + axisHeight + 10, rx: 3}));
  messages.forEach((message, at) => drawBar(chart, message, at, height(message.bytes)));
  drawNumbers(chart);
}

function stripePattern() {
  const pattern = svg("pattern", {id: "stripes", width: 6, height: 6, patternUnits: "userSpaceOnUse",
                                  patternTransform: "rotate(45)"});
  const stripe = svg("rect", {width: 3, height: 6});
  stripe.style.fill = "var(--stripe)";
  pattern.append(stripe);
  return pattern;
}

function drawNumbers(chart) {
  const every = [1, 2, 5, 10, 20, 50, 100, 1000].find((step) => step * barWidth >= 30) ?? 1000;
  for (let at = 0; at < messages.length; at += every) {
    label(chart, leftMargin + (at + 0.5) * barWidth, plotHeight + 32, String(numberOf(messages[at])));
  }
}

function gridValues(most, log) {
  if (log) return [1, 1024, 1024 * 1024].filter((value) => value <= most);
  let step = 1;
  while (most / step > 4) step *= 2;
  const values = [];
  for (let value = 0; value <= most; value += step) values.push(value);
  return values;
}

function drawBar(chart, message, at, height) {
  const x = leftMargin + at * barWidth;
  const gap = barWidth > 6 ? 1.5 : 0.5;
  const inner = barWidth - gap;
  let y = plotHeight;
  const part = (bytes, fill, striped) => {
    if (!bytes) return;
    const tall = height * bytes / message.bytes;
    y -= tall;
    const box = {x: x + gap / 2, y, width: inner, height: tall};
    chart.append(svg("rect", {...box, fill}));
    if (striped) chart.append(svg("rect", {...box, fill: "url(#stripes)"}));
  };
  let known = 0;
  kinds.forEach((kind, index) => {
    const bytes = message.records[kind.name].bytes;
    known += bytes;
    part(bytes, `var(--${kind.form === "empty" ? "other" : hue(index)})`, isReduced(index));
  });
  part(message.bytes - known, message.decoded ? "var(--other)" : "var(--bad)");
  if (!message.decoded) label(chart, x + barWidth / 2, plotHeight + 15, "✗", "middle", "var(--bad)");
  else if (message.key_frame) label(chart, x + barWidth / 2, plotHeight + 15, "◆", "middle", "var(--accent)");
  const hit = svg("rect", {class: "hit", x, y: -10, width: barWidth,
                           height: plotHeight + axisHeight + 10});
  const title = svg("title", {});
  title.textContent = describe(message);
  hit.append(title);
  hit.addEventListener("click", () => show(at));
  chart.append(hit);
}

function label(chart, x, y, words, anchor = "middle", fill = "var(--quiet)") {
  const text = svg("text", {x, y, "text-anchor": anchor});
  text.style.fill = fill;
  text.textContent = words;
  chart.append(text);
}

const describe = (message) =>
  `message ${numberOf(message)}: ${humanBytes(message.bytes)}, ` +
  (message.decoded ? `${message.changed_blocks} changed` : "failed");

// ---- Blocks

let mapScale = null;

/** Pixels of the grid in the picture; row 0 is at the bottom, the last row and column are cut. */
function cellBox(message, cell) {
  const {picture, block, grid} = message;
  const row = Math.floor(cell / grid.columns), column = cell % grid.columns;
  const bottom = picture.height - row * block.height;
  const top = Math.max(0, bottom - block.height);
  const left = column * block.width;
  return {left, top, width: Math.min(block.width, picture.width - left), height: bottom - top};
}

function lastKinds(message) {
  const kindOf = new Map();
  for (const [cell, kind] of message.cells) kindOf.set(cell, kind);
  return kindOf;
}

const failedCell = (message) => message.failure && message.failure.row !== null
  ? message.failure.row * message.grid.columns + message.failure.column : -1;

function drawMap(message) {
  const canvas = byId("map");
  canvas.hidden = !message.grid;
  if (!message.grid) return;
  const room = canvas.parentElement.clientWidth - 32;
  const {picture, block, grid} = message;
  const x = Math.min(room / picture.width, 96 / Math.min(block.width, picture.width));
  const y = Math.max(x, 10 / Math.min(block.height, picture.height));
  const dots = window.devicePixelRatio || 1;
  mapScale = {x, y};
  canvas.style.width = `${picture.width * x}px`;
  canvas.width = Math.ceil(picture.width * x * dots);
  canvas.height = Math.ceil(picture.height * y * dots);
  const pen = canvas.getContext("2d");
  pen.scale(dots, dots);
  const kindOf = lastKinds(message), failed = failedCell(message);
  const count = grid.columns * grid.rows;
  for (let cell = 0; cell < count; ++cell) {
    drawCell(pen, message, cell, kindOf.get(cell) ?? emptyKind, cell === failed);
  }
  canvas.setAttribute("aria-label",
      `${grid.columns} by ${grid.rows} blocks, ${message.changed_blocks} of them changed`);
}

function drawCell(pen, message, cell, kind, failed) {
  const box = cellBox(message, cell);
  const left = box.left * mapScale.x, top = box.top * mapScale.y;
  const width = box.width * mapScale.x, height = box.height * mapScale.y;
  const gap = Math.min(width, height) > 6 ? 1 : 0;
  pen.fillStyle = color(failed ? "bad" : hue(kind));
  pen.fillRect(left, top, width - gap, height - gap);
  if (isReduced(kind) && !failed) drawStripes(pen, left, top, width - gap, height - gap);
  const size = Math.min(width, height, 26) * 0.55;
  if (size < 6.5 || (!failed && !isChange(kind))) return;
  pen.fillStyle = failed ? color("panel") : color("letter");
  pen.font = `600 ${size}px ui-monospace, "DejaVu Sans Mono", monospace`;
  pen.textAlign = "center";
  pen.textBaseline = "middle";
  pen.fillText(failed ? "!" : kinds[kind].letter, left + width / 2, top + height / 2);
}

function drawStripes(pen, left, top, width, height) {
  pen.save();
  pen.beginPath();
  pen.rect(left, top, width, height);
  pen.clip();
  pen.strokeStyle = color("stripe");
  pen.lineWidth = 2.5;
  pen.beginPath();
  for (let at = -height; at < width; at += 7) {
    pen.moveTo(left + at, top + height);
    pen.lineTo(left + at + height, top);
  }
  pen.stroke();
  pen.restore();
}

function cellAt(message, event) {
  const frame = byId("map").getBoundingClientRect();
  const {picture, block, grid} = message;
  const x = (event.clientX - frame.left) / frame.width * picture.width;
  const y = picture.height - (event.clientY - frame.top) / frame.height * picture.height;
  const column = Math.floor(x / block.width), row = Math.floor(y / block.height);
  return column >= 0 && column < grid.columns && row >= 0 && row < grid.rows
    ? row * grid.columns + column : -1;
}

function describeCell(message, cell) {
  const box = cellBox(message, cell);
  const place = `Row ${Math.floor(cell / message.grid.columns)}, column ` +
                `${cell % message.grid.columns} (${box.width} × ${box.height} pixels): `;
  if (cell === failedCell(message)) return place + "here the message failed";
  const records = message.cells.filter((entry) => entry[0] === cell);
  if (!records.length) return place + "unchanged";
  return place + records.map(([, kind, bytes, pass, first, rows]) =>
    (message.passes > 1 ? `pass ${pass} ` : "") + `${kinds[kind].label}, ${humanBytes(bytes)}` +
    (rows ? `, rows ${first} to ${first + rows - 1} from the bottom` : "")).join("; ");
}

const mapHint = "Point at a block to see its record.";

// ---- Picture: the last whole one, and the patches since

const loaded = new Map();
let drawnAt = -1, wanted = 0;

function load(at) {
  if (!loaded.has(at)) {
    const image = new Image();
    loaded.set(at, new Promise((done, failed) => {
      image.onload = () => done(image);
      image.onerror = () => failed(new Error(`that of message ${numberOf(messages[at])} is damaged`));
    }));
    image.src = messages[at].patch.src;
    if (loaded.size > 64) loaded.delete(loaded.keys().next().value);
  }
  return loaded.get(at);
}
const hasPatch = (at) => messages[at].patch && messages[at].patch !== "omitted";

async function drawPicture(at) {
  const turn = ++wanted;
  const canvas = byId("picture");
  const omitted = messages[at].patch === "omitted";
  let begin = at === drawnAt ? at + 1 : at;
  while (begin > 0 && begin !== drawnAt + 1 && !(hasPatch(begin) && messages[begin].patch.whole)) --begin;
  const patches = [];
  for (let i = begin; i <= at; ++i) if (hasPatch(i)) patches.push(i);
  let images;
  try {
    images = await Promise.all(patches.map(load));
  } catch (error) {
    byId("note").textContent = `The picture cannot be shown: ${error.message}`;
    return;
  }
  if (turn !== wanted) return;
  images.forEach((image, i) => {
    const patch = messages[patches[i]].patch;
    if (patch.whole) {
      canvas.width = patch.width;
      canvas.height = patch.height;
    }
    canvas.getContext("2d").drawImage(image, patch.x, patch.y);
  });
  drawnAt = at;
  const any = messages.slice(0, at + 1).some((message) => message.patch && message.patch.whole);
  byId("stage").hidden = !any || omitted;
  sizePicture();
  drawOutlines(messages[at]);
  canvas.setAttribute("aria-label", `The picture after message ${numberOf(messages[at])}`);
  byId("note").textContent = pictureNote(messages[at], any);
}

function pictureNote(message, any) {
  if (message.patch === "omitted") {
    return "From here on the pictures are left out: the page has reached its limit. " +
           "Make it with a larger --picture-limit to see them.";
  }
  if (!any) return "There is no picture yet.";
  if (!message.decoded) return "The message failed; this is the picture as it was before.";
  if (!message.patch) return "The picture is the same as before.";
  const {x, y, width, height, whole} = message.patch;
  return whole ? "" : `Changed within ${width} × ${height} pixels at ${x}, ${y}.`;
}

function sizePicture() {
  const canvas = byId("picture");
  const room = byId("stage").parentElement.clientWidth - 32;
  const larger = Math.max(1, Math.min(8, Math.floor(Math.min(room, 480) / canvas.width)));
  canvas.style.width = `${Math.min(room, canvas.width * larger)}px`;
  canvas.style.imageRendering = canvas.width < room ? "pixelated" : "auto";
}

function drawOutlines(message) {
  const canvas = byId("outline"), picture = byId("picture");
  canvas.width = picture.width;
  canvas.height = picture.height;
  const sizeFits = message.picture && message.picture.width === picture.width &&
                   message.picture.height === picture.height;
  if (!byId("outlines").checked || !message.grid || !sizeFits) return;
  const pen = canvas.getContext("2d");
  const wide = Math.max(1, Math.round(picture.width / (picture.clientWidth || picture.width) * 1.5));
  pen.lineWidth = wide;
  for (const [cell, kind] of lastKinds(message)) {
    if (!isChange(kind)) continue;
    const box = cellBox(message, cell);
    pen.strokeStyle = color(hue(kind));
    pen.strokeRect(box.left + wide / 2, box.top + wide / 2, box.width - wide, box.height - wide);
  }
}

// ---- Tables

function fieldRows(message) {
  const {picture, block, grid} = message;
  const rows = [["Position", `byte ${message.offset} of the file, ${counted(message.bytes, "byte")}`]];
  if (message.codec_type === null) return rows;
  rows.push(["Frame", message.key_frame ? "key frame" : `type ${message.frame_type}`],
            ["Codec", `type ${message.codec_type}, ${codec(message.codec_type)}`],
            ["Picture", `${picture.width} × ${picture.height} pixels`],
            ["Blocks", `${block.width} × ${block.height} pixels`]);
  if (!grid) return rows;
  const count = grid.columns * grid.rows;
  rows.push(["Grid", `${grid.columns} × ${grid.rows} = ${counted(count, "block")}`],
            ["Changed", `${counted(message.changed_blocks, "block")}, ${percent(message.changed_blocks, count)}`]);
  if (message.flags !== null) {
    const palette = message.palette_bytes === null ? "none"
      : `${message.palette}, ${counted(message.palette_bytes, "byte")}`;
    rows.push(["Flags", `0x${message.flags.toString(16).toUpperCase().padStart(2, "0")}`],
              ["Palette", palette], ["Passes", String(message.passes)]);
  }
  if (message.unread_bytes) rows.push(["Not read", `${counted(message.unread_bytes, "byte")} at the end`]);
  return rows;
}

function fillTables(message) {
  byId("fields").replaceChildren(...fieldRows(message).map(([name, value]) => {
    const row = element("tr");
    row.append(element("th", name, {scope: "row"}), element("td", value));
    return row;
  }));
  const rows = [];
  kinds.forEach((kind, index) => {
    const tally = message.records[kind.name];
    if (!tally.count) return;
    const row = element("tr"), cell = element("td"), name = element("div", "", {class: "kind"});
    name.append(swatch(index), kind.label);
    cell.append(name);
    row.append(cell, element("td", tally.count, {class: "number"}),
               element("td", humanBytes(tally.bytes), {class: "number"}),
               element("td", percent(tally.bytes, message.bytes), {class: "number"}));
    rows.push(row);
  });
  if (!rows.length) {
    const row = element("tr");
    row.append(element("td", "No record was decoded.", {colspan: 4}));
    rows.push(row);
  }
  byId("records").replaceChildren(...rows);
}

// ---- Moving about

let current = 0, playing = null;  // an object of its own for each time it is begun

function show(at) {
  if (!messages.length) return;
  current = Math.max(0, Math.min(messages.length - 1, at));
  const message = messages[current];
  byId("which").textContent = `Message ${numberOf(message)}`;
  const badges = [element("span", message.decoded ? "✓ decoded" : "✗ failed",
                          {class: `badge ${message.decoded ? "good" : "bad"}`})];
  if (message.key_frame) badges.push(element("span", "◆ key frame", {class: "badge key"}));
  byId("badges").replaceChildren(...badges);
  byId("failure").hidden = message.decoded;
  if (!message.decoded) byId("failure").textContent = failureText(message.failure);
  byId("hint").textContent = message.grid ? mapHint : "The message has no grid.";
  drawMap(message);
  fillTables(message);
  moveMark(message);
  for (const id of ["first", "back"]) byId(id).disabled = current === 0;
  for (const id of ["next", "last"]) byId(id).disabled = current === messages.length - 1;
  history.replaceState(null, "", `#${current + 1}`);
  return drawPicture(current);
}

function failureText(failure) {
  const place = failure.row === null ? ""
    : `, block row ${failure.row} column ${failure.column}` + (failure.pass > 1 ? `, pass ${failure.pass}` : "");
  return `✗ Byte ${failure.offset}${place}: ${failure.what}.`;
}

function moveMark(message) {
  const x = leftMargin + current * barWidth;
  byId("here").setAttribute("x", x);
  const chart = byId("timeline"), scroll = byId("scroll");
  chart.setAttribute("aria-valuenow", current + 1);
  chart.setAttribute("aria-valuetext", describe(message));
  if (x < scroll.scrollLeft + leftMargin || x + barWidth > scroll.scrollLeft + scroll.clientWidth) {
    scroll.scrollLeft = x - scroll.clientWidth / 2;
  }
}

function nextWhere(test) {
  for (let i = 1; i <= messages.length; ++i) {
    const at = (current + i) % messages.length;
    if (test(messages[at])) return show(at);
  }
}
const nextFailure = () => nextWhere((message) => !message.decoded);
const nextKey = () => nextWhere((message) => message.decoded && message.key_frame);

function stop() {
  playing = null;
  byId("play").textContent = "▶ Play";
}

async function play() {
  if (playing) return stop();
  const turn = playing = {};
  byId("play").textContent = "■ Stop";
  if (current === messages.length - 1) await show(0);
  while (turn === playing && current < messages.length - 1) {
    await Promise.all([show(current + 1), new Promise((done) => setTimeout(done, 100))]);
  }
  if (turn === playing) stop();
}

function toggleOutlines() {
  byId("outlines").checked = !byId("outlines").checked;
  drawOutlines(messages[current]);
}

const actions = {
  ArrowLeft: () => show(current - 1), ArrowRight: () => show(current + 1),
  PageUp: () => show(current - 10), PageDown: () => show(current + 10),
  Home: () => show(0), End: () => show(messages.length - 1),
  " ": play, f: nextFailure, k: nextKey, o: toggleOutlines,
};

function redraw() {
  drawTimeline();
  show(current);
}

function summaryText() {
  const failed = messages.filter((message) => !message.decoded).length;
  const bytes = messages.reduce((sum, message) => sum + message.bytes, 0);
  return `${counted(messages.length, "message")}, ${messages.length - failed} decoded, ` +
         `${failed} failed · ${humanBytes(bytes)}` +
         (messages.length ? `, ${humanBytes(Math.round(bytes / messages.length))} a message` : "");
}

function fillLegend() {
  const used = kinds.map((kind, index) => index).filter((index) =>
    index !== emptyKind && messages.some((message) => message.records[kinds[index].name].count));
  byId("legend").replaceChildren(...used.map((index) => {
    const entry = element("li");
    entry.append(swatch(index), kinds[index].label);
    return entry;
  }), element("li", "◆ key frame"), element("li", "✗ failed"),
      element("li", "grey: headers, palette, empty records"));
}

function start() {
  document.title = `${stream.name}: zlibvideo info`;
  byId("name").textContent = stream.name;
  byId("summary").textContent = summaryText();
  byId("problem").hidden = !trouble;
  byId("problem").textContent = trouble;
  fillLegend();
  byId("nextfail").hidden = messages.every((message) => message.decoded);
  byId("first").onclick = actions.Home;
  byId("back").onclick = actions.ArrowLeft;
  byId("next").onclick = actions.ArrowRight;
  byId("last").onclick = actions.End;
  byId("play").onclick = play;
  byId("nextfail").onclick = nextFailure;
  byId("log").onchange = redraw;
  byId("outlines").onchange = () => drawOutlines(messages[current]);
  byId("map").onmousemove = (event) => {
    const cell = cellAt(messages[current], event);
    byId("hint").textContent = cell < 0 ? mapHint : describeCell(messages[current], cell);
  };
  document.addEventListener("keydown", (event) => {
    const button = event.target.closest("button, input");
    if (event.ctrlKey || event.altKey || event.metaKey || (button && event.key === " ")) return;
    if (!actions[event.key] || !messages.length) return;
    event.preventDefault();
    actions[event.key]();
  });
  window.addEventListener("resize", redraw);
  matchMedia("(prefers-color-scheme: dark)").addEventListener("change", redraw);
  drawTimeline();
  show((Number.parseInt(location.hash.slice(1), 10) || 1) - 1);
}
start();
