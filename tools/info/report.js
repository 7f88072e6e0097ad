"use strict";

const stream = JSON.parse(byId("stream").textContent);
const {kinds, messages} = stream;
const emptyKind = kinds.findIndex((kind) => kind.name === "empty");

function element(tag, text, className = "") {
  const made = document.createElement(tag);
  made.textContent = text;
  made.className = className;
  return made;
}

function row(...cells) {
  const made = document.createElement("tr");
  made.append(...cells);
  return made;
}

// A color for each form of a record, and stripes where its pixels are colour-reduced.
for (const kind of kinds) {
  kind.color = kind.name.replace("reduced_", "");
  kind.striped = kind.name.startsWith("reduced_");
}

function swatch(kind) {
  const box = element("span", kind.letter, kind.striped ? "swatch striped" : "swatch");
  box.style.backgroundColor = `var(--${kind.color})`;
  return box;
}

// ---- Bytes of each message, by kind of record

function drawBars() {
  const canvas = byId("bars"), dots = window.devicePixelRatio || 1;
  canvas.width = canvas.clientWidth * dots;
  canvas.height = canvas.clientHeight * dots;
  const pen = canvas.getContext("2d"), style = getComputedStyle(canvas);
  const most = messages.reduce((largest, message) => Math.max(largest, message.bytes), 1);
  const wide = canvas.width / messages.length, gap = wide > 4 * dots ? dots : 0;
  messages.forEach((message, at) => {
    let bottom = canvas.height;
    const part = (bytes, color) => {
      const tall = bytes / most * canvas.height;
      pen.fillStyle = style.getPropertyValue(`--${color}`);
      pen.fillRect(at * wide, bottom - tall, wide - gap, tall);
      bottom -= tall;
    };
    let others = message.bytes;
    for (const [kind, , bytes] of message.records) {
      if (kind === emptyKind) continue;
      others -= bytes;
      part(bytes, kinds[kind].color);
    }
    part(others, message.decoded ? "other" : "bad");
    if (!message.decoded) part(Math.max(0, most / 20 - others), "bad");
  });
}

// ---- One message

/** The message that last changed the picture; null if its picture is left out or there is none. */
async function picture(at) {
  while (at > 0 && messages[at].picture === null) --at;
  if (!messages[at].picture) return null;
  const image = new Image();
  image.src = messages[at].picture;
  await new Promise((loaded) => { image.onload = loaded; });
  return image;
}

function pictureNote(message, at) {
  if (message.picture === false) {
    return "This picture is left out. A larger --picture-limit has room for more.";
  }
  if (message.picture) return "";
  const any = messages.slice(0, at).some((earlier) => earlier.picture);
  return any ? "The picture is as before." : "There is no picture yet.";
}

function recordRow([kind, count, , bytes, percent]) {
  const name = element("td", "");
  name.append(swatch(kinds[kind]), kinds[kind].label);
  return row(name, ...[count, bytes, percent].map((text) => element("td", text)));
}

function show(at) {
  const message = messages[at];
  byId("title").textContent = message.title;
  byId("line").textContent = message.line;
  byId("line").className = message.decoded ? "" : "bad";
  byId("note").textContent = pictureNote(message, at);
  byId("hint").textContent = "Point at a block to see its record.";
  byId("hint").hidden = !message.blocks;
  byId("slider").setAttribute("aria-valuetext", `${message.title}: ${message.line}`);
  byId("here").style.left = `${100 * at / messages.length}%`;
  byId("records").replaceChildren(...message.records.map(recordRow));
  byId("fields").replaceChildren(...Object.entries(message.fields).map(
      ([name, value]) => row(element("th", name), element("td", value))));
  clearTimeout(show.timer);  // browsers limit how often the address changes
  show.timer = setTimeout(() => history.replaceState(null, "", `#${message.number}`), 250);
}

function describeBlock(event) {
  const cell = viewer.cellAt(event);
  if (cell === null) return;
  const {cells, columns, failed} = messages[viewer.at].blocks;
  const texts = cells.filter((entry) => entry[0] === cell).map(
      ([, kind, text]) => `${kinds[kind].label}, ${text}`);
  if (cell === failed) texts.push("here the message failed");
  byId("hint").textContent = `Block ${Math.floor(cell / columns)},${cell % columns}: ` +
                             (texts.join("; ") || "unchanged");
}

// ---- The page

const viewer = new Viewer({count: messages.length, kinds, picture, show,
                           blocks: (at) => messages[at].blocks});

function showNext(test) {
  for (let i = 1; i <= messages.length; ++i) {
    const at = (viewer.at + i) % messages.length;
    if (test(messages[at])) return viewer.show(at);
  }
}

/** The message of the page's address, which counts from 1. */
function showAddressed() {
  const number = Number.parseInt(location.hash.slice(1), 10) || 1;
  viewer.show(messages.filter((message) => message.number <= number).length - 1);
}

document.title = `${stream.name}: zlibvideo info`;
byId("name").textContent = stream.name;
byId("summary").textContent = stream.summary;
byId("problem").textContent = stream.problem;
byId("problem").hidden = !stream.problem;
byId("here").style.width = `max(2px, ${100 / messages.length}%)`;
byId("failure").hidden = messages.every((message) => message.decoded);
viewer.actions.f = byId("failure").onclick = () => showNext((message) => !message.decoded);
viewer.actions.k = () => showNext((message) => message.key);
byId("bars").onclick = (event) =>
  viewer.show(Math.floor(event.offsetX / byId("bars").clientWidth * messages.length));
for (const id of ["picture", "map"]) byId(id).onpointermove = describeBlock;
window.addEventListener("hashchange", showAddressed);
window.addEventListener("resize", drawBars);
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", drawBars);
drawBars();
showAddressed();
