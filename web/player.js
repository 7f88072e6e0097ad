// ---- The messages of a stream, and a decoder that seeks in them

const MOST_CHECKPOINT_BYTES = 256 * 1024 * 1024;
const SLICE_MS = 15;  // of decoding, then the page draws and handles events

class Movie {
  messages = [];
  failures = new Set();  // of the messages decoded so far
  at = -1;  // the last decoded message
  #decoder;
  #wanted = -1;
  #seeking = null;  // the promise of the loop that decodes
  #checkpoints = new Map();  // snapshots by message; -1 is the start
  #spacing = 4;  // messages between two checkpoints

  static async create() {
    const movie = new Movie();
    movie.#decoder = await Decoder.create(wasm);
    movie.#checkpoints.set(-1, movie.#decoder.snapshot());
    return movie;
  }

  /** Resolves with the decoder after the last wanted message, or if the page opens another movie. */
  async seek(at) {
    this.#wanted = at;
    this.#seeking ??= this.#approach();
    await this.#seeking;
    return this.#decoder;
  }

  async #approach() {
    await null;  // `seek` sets `#seeking` first
    try {
      while (movie === this) {
        this.#decodeSlice();
        if (this.at === this.#wanted) return;
        byId("note").textContent = `Decoding message ${this.at + 1} …`;
        await new Promise((resume) => setTimeout(resume));
      }
    } finally {
      this.#seeking = null;
    }
  }

  #decodeSlice() {
    for (const end = performance.now() + SLICE_MS; performance.now() < end;) {
      this.#jump();
      if (this.at === this.#wanted) return;
      this.#decodeNext();
    }
  }

  /** Restores the nearest checkpoint, unless the decoder is nearer. */
  #jump() {
    let nearest = -1;
    for (const at of this.#checkpoints.keys()) if (at <= this.#wanted) nearest = Math.max(nearest, at);
    if (this.at <= this.#wanted && nearest <= this.at) return;
    this.#decoder.restore(this.#checkpoints.get(nearest));
    this.at = nearest;
  }

  #decodeNext() {
    ++this.at;
    if (!this.#decoder.decode(this.messages[this.at])) this.failures.add(this.at);
    if (this.at % this.#spacing === 0 && !this.#checkpoints.has(this.at)) this.#addCheckpoint();
  }

  /** If checkpoints need too much memory, keeps every second checkpoint. */
  #addCheckpoint() {
    let bytes = 0;
    try {
      this.#checkpoints.set(this.at, this.#decoder.snapshot());
    } catch (problem) {
      if (!(problem instanceof RangeError)) throw problem;
      bytes = Infinity;  // no memory for the snapshot
    }
    for (const snapshot of this.#checkpoints.values()) bytes += snapshot.byteLength;
    if (bytes <= MOST_CHECKPOINT_BYTES) return;
    this.#spacing *= 2;
    for (const at of this.#checkpoints.keys()) {
      if (at >= 0 && at % this.#spacing !== 0) this.#checkpoints.delete(at);
    }
  }
}

// ---- The page

let movie = null;
let viewer = null;
let changed = null;  // the changed blocks, for the viewer
let framesPerSecond = 10;
let drawnFailures = 0;
let nextUpdate = null;  // a timer
const UPDATE_MS = 200;  // between two updates while messages arrive
const isKeyFrame = (message) => message[0] >> 4 === 1;

async function picture(at) {
  const shown = movie;
  const decoder = await shown.seek(at).catch((problem) =>
    complain(`Decoding failed: ${problem.message}. Open the file again.`));
  if (!decoder || movie !== shown || shown.at !== at) return null;
  const {width, height} = decoder;
  describe(at, decoder);
  if (width === 0) return null;
  const canvas = new OffscreenCanvas(width, height);
  canvas.getContext("2d").putImageData(new ImageData(decoder.pixels, width, height), 0, 0);
  return canvas;
}

function describe(at, decoder) {
  const {width, height, blockSize, changedBlocks, complete} = decoder;
  const columns = Math.ceil(width / blockSize.width);
  const cellOf = ({left, top, height: tall}) =>
    Math.floor((height - top - tall) / blockSize.height) * columns + Math.floor(left / blockSize.width);
  changed = width === 0 ? null : {
    width, height, blockWidth: blockSize.width, blockHeight: blockSize.height, columns,
    cells: changedBlocks.map((area) => [cellOf(area), 0]), failed: null,
  };
  const all = columns * Math.ceil(height / blockSize.height);
  const failed = movie.failures.has(at);
  const bytes = `${movie.messages[at].length.toLocaleString("en")} bytes`;
  byId("line").className = failed ? "bad" : "";
  byId("line").textContent = failed ? `This message failed, the picture is as before. ${bytes}` :
    `${isKeyFrame(movie.messages[at]) ? "Key frame, " : ""}${bytes}, picture ${width} × ${height}`;
  byId("note").textContent = width === 0 ? "There is no picture yet." :
    complete ? "" : "Some blocks are missing. They are black.";
  byId("hint").textContent = width === 0 ? "" :
    `${changedBlocks.length} of ${all} blocks changed, blocks of ${blockSize.width} × ${blockSize.height}`;
  if (movie.failures.size !== drawnFailures) drawBars();
}

function showAt(at) {
  byId("title").textContent = `Message ${at + 1} of ${movie.messages.length}`;
  byId("slider").setAttribute("aria-valuetext", byId("title").textContent);
  byId("here").style.left = `${100 * at / movie.messages.length}%`;
  byId("here").style.width = `max(2px, ${100 / movie.messages.length}%)`;
}

/** Messages that share a column of dots overlap: the largest is seen. */
function drawBars() {
  if (!movie) return;
  drawnFailures = movie.failures.size;
  byId("failure").disabled = drawnFailures === 0;
  const canvas = byId("bars"), dots = window.devicePixelRatio || 1, count = movie.messages.length;
  canvas.width = canvas.clientWidth * dots;
  canvas.height = canvas.clientHeight * dots;
  const pen = canvas.getContext("2d"), style = getComputedStyle(canvas);
  const most = movie.messages.reduce((largest, {length}) => Math.max(largest, length), 1);
  const wide = canvas.width / count, gap = wide > 4 * dots ? dots : 0;
  for (const failed of [false, true]) {
    pen.fillStyle = style.getPropertyValue(failed ? "--bad" : "--direct");
    movie.messages.forEach(({length}, at) => {
      if (movie.failures.has(at) !== failed) return;
      const tall = Math.max(failed ? canvas.height / 8 : dots, length / most * canvas.height);
      pen.fillRect(at * wide, canvas.height - tall, Math.max(dots, wide - gap), tall);
    });
  }
}

function setSpeed(wanted) {
  framesPerSecond = Math.min(240, Math.max(1, wanted));
  byId("speed").textContent = `${framesPerSecond} fps`;
  if (viewer) viewer.stepMs = 1000 / framesPerSecond;
}

const faster = () => setSpeed(framesPerSecond * 2);
const slower = () => setSpeed(framesPerSecond / 2);

function showNextFailure() {
  const failures = [...movie.failures].sort((a, b) => a - b);
  if (failures.length > 0) viewer.show(failures.find((at) => at > viewer.at) ?? failures[0]);
}

function save() {
  if (viewer.drawn < 0) return;
  const name = `${byId("name").textContent.replace(/\.zvm$/, "")}-${viewer.drawn + 1}.png`;
  byId("picture").toBlob((blob) => {
    const link = document.createElement("a");
    link.href = URL.createObjectURL(blob);
    link.download = name;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 1000);
  });
}

// ---- Opening

function complain(problem) {
  byId("problem").textContent = problem;
  byId("problem").hidden = !problem;
}

/** Shows the messages that have arrived so far. */
function update() {
  nextUpdate = null;
  const count = movie.messages.length;
  byId("start").hidden = count > 0;
  byId("views").hidden = count === 0;
  if (count === 0) return;
  byId("slider").max = viewer.lastAt;
  byId("summary").textContent = `${count.toLocaleString("en")} messages`;
  viewer.show(Math.min(viewer.at, viewer.lastAt));
  drawBars();
}

/** Shows the page without messages. */
function begin(name, opened) {
  if (viewer?.playing) viewer.play();
  movie = opened;
  viewer ??= makeViewer();
  viewer.at = 0;
  changed = null;
  viewer.drawPicture(null);
  viewer.drawMap();
  document.title = `${name}: zlibvideo player`;
  byId("name").textContent = name;
  for (const id of ["summary", "title", "line", "note", "hint"]) byId(id).textContent = "";
  complain("");
  update();
}

/** `openStream` returns a stream of bytes, or its promise. */
async function open(name, openStream) {
  const opened = await Movie.create().catch((problem) => complain(`The decoder cannot start: ${
    problem.message}. It requires Chromium 91, Firefox 89, Safari 16.4 or later.`));
  if (!opened) return;
  begin(name, opened);
  try {
    for await (const message of messagesFrom(await openStream())) {
      if (movie !== opened) return;
      movie.messages.push(message);
      nextUpdate ??= setTimeout(update, movie.messages.length === 1 ? 0 : UPDATE_MS);
    }
    if (movie === opened && movie.messages.length === 0) complain(`${name} is empty.`);
  } catch (problem) {
    if (movie === opened) complain(`${name}: ${problem.message}`);
  }
  if (movie === opened) update();
}

function openFile(file) {
  if (file) open(file.name, () => file.stream());
  byId("file").value = "";  // so the same file can be chosen again
}

async function fetchStream(address) {
  const answer = await fetch(address).catch((problem) => {
    throw new Error(`${problem.message}. Perhaps the server does not allow other pages (CORS).`);
  });
  if (!answer.ok) throw new Error(`the server answers ${answer.status} ${answer.statusText}`);
  return answer.body;
}

function makeViewer() {
  const made = new Viewer({
    get count() { return movie.messages.length; },
    kinds: [{letter: "", label: "changed", color: "direct", striped: false}],
    blocks: () => changed, picture, show: showAt,
  });
  Object.assign(made.actions, {f: showNextFailure, s: save, "+": faster, "=": faster, "-": slower});
  made.stepMs = 1000 / framesPerSecond;
  return made;
}

byId("open").onclick = () => byId("file").click();
byId("file").onchange = () => openFile(byId("file").files[0]);
byId("slower").onclick = slower;
byId("faster").onclick = faster;
byId("failure").onclick = showNextFailure;
byId("save").onclick = save;
byId("bars").onclick = (event) =>
  viewer.show(Math.floor(event.offsetX / byId("bars").clientWidth * movie.messages.length));
window.addEventListener("resize", drawBars);
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", drawBars);
document.addEventListener("keydown", ({key, ctrlKey, metaKey}) => {
  if (key === "o" && !ctrlKey && !metaKey) byId("file").click();
});
for (const kind of ["dragover", "dragleave", "drop"]) {
  document.addEventListener(kind, (event) => {
    event.preventDefault();
    document.body.classList.toggle("over", kind === "dragover");
    if (kind === "drop") openFile(event.dataTransfer.files[0]);
  });
}
setSpeed(framesPerSecond);
const address = new URLSearchParams(location.search).get("src");
if (address) open(address.replace(/.*\//, "") || address, () => fetchStream(address));
