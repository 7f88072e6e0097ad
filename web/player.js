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

  /** Resolves with the decoder after it decoded the last message that was asked for. */
  async seek(at) {
    this.#wanted = at;
    this.#seeking ??= this.#approach();
    await this.#seeking;
    return this.#decoder;
  }

  async #approach() {
    await null;  // `seek` sets `#seeking` first
    for (;;) {
      this.#decodeSlice();
      if (this.at === this.#wanted) break;
      byId("note").textContent = `Decoding message ${this.at + 1} …`;
      await new Promise((resume) => setTimeout(resume));
    }
    this.#seeking = null;
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
    this.#checkpoints.set(this.at, this.#decoder.snapshot());
    let bytes = 0;
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
const isKeyFrame = (message) => message[0] >> 4 === 1;

async function picture(at) {
  const shown = movie;
  const decoder = shown.messages.length > 0 ? await shown.seek(at) : null;
  if (movie !== shown || shown.at !== at) return null;
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
  byId("picture").toBlob((blob) => {
    const link = document.createElement("a");
    link.href = URL.createObjectURL(blob);
    link.download = `${byId("name").textContent.replace(/\.zvm$/, "")}-${viewer.at + 1}.png`;
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
  const count = movie.messages.length;
  byId("start").hidden = count > 0;
  byId("views").hidden = count === 0;
  if (count === 0) return;
  byId("slider").max = viewer.lastAt;
  byId("summary").textContent = `${count.toLocaleString("en")} messages`;
  viewer.show(Math.min(viewer.at, viewer.lastAt));
  drawBars();
}

/** `stream` is a promise of a stream of bytes. */
async function open(name, stream) {
  const opened = await Movie.create();
  if (viewer?.playing) viewer.play();
  movie = opened;
  viewer ??= makeViewer();
  viewer.at = 0;
  document.title = `${name}: zlibvideo player`;
  byId("name").textContent = name;
  complain("");
  update();
  try {
    let updated = 0;
    for await (const message of messagesFrom(await stream)) {
      if (movie !== opened) return;
      movie.messages.push(message);
      if (performance.now() - updated < 200) continue;
      update();
      updated = performance.now();
    }
    if (movie.messages.length === 0) complain(`${name} is empty.`);
  } catch (problem) {
    if (movie === opened) complain(`${name}: ${problem.message}`);
  }
  if (movie === opened) update();
}

function openFile(file) {
  if (file) open(file.name, file.stream());
}

async function fetchStream(address) {
  const answer = await fetch(address);
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
if (address) open(address.replace(/.*\//, ""), fetchStream(address));
