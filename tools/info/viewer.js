"use strict";

const byId = (id) => document.getElementById(id);

/** Shows the messages of a stream: the picture, a map of the blocks that changed, a slider, buttons
 *  and keys, which are the elements of the page with these ids. The stream has
 *
 *    count         how many messages there are; they are counted from 0
 *    picture(at)   promise of an image or canvas with the picture after a message, or of null
 *    blocks(at)    null, or the message's grid, in pixels {width, height, blockWidth, blockHeight},
 *                  its {columns}, the {cells} that changed as arrays of index and kind, and the
 *                  index of the cell that {failed}; cells are counted from the bottom left
 *    kinds         for each kind of change, {letter, label, color, striped}
 *    show(at)      is called to show the rest of a message
 */
class Viewer {
  constructor(stream) {
    this.stream = stream;
    this.at = 0;
    this.drawn = -1;  // the message whose picture is drawn; -1 without a picture
    this.calls = 0;  // of `show`
    this.playing = null;  // an object for each time it begins
    this.stepMs = 100;
    /** By key. */
    this.actions = {
      ArrowLeft: () => this.step(-1), ArrowRight: () => this.step(1),
      PageUp: () => this.show(this.at - 10), PageDown: () => this.show(this.at + 10),
      Home: () => this.show(0), End: () => this.show(this.lastAt), " ": () => this.play(),
    };
    const buttons = {first: "Home", back: "ArrowLeft", play: " ", next: "ArrowRight", last: "End"};
    for (const [id, key] of Object.entries(buttons)) byId(id).onclick = this.actions[key];
    byId("slider").max = this.lastAt;
    byId("slider").oninput = () => this.show(byId("slider").valueAsNumber);
    document.addEventListener("keydown", (event) => this.press(event));
    window.addEventListener("resize", () => this.drawMap());
    const dark = matchMedia("(prefers-color-scheme: dark)");
    dark.addEventListener("change", () => this.drawMap());
  }

  get lastAt() { return this.stream.count - 1; }

  press(event) {
    const clicks = event.key === " " && event.target.closest("button, a");
    const action = this.actions[event.key];
    if (!action || clicks || this.stream.count === 0) return;
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    event.preventDefault();
    action();
  }

  step(messages) {
    if (this.playing) this.play();
    this.show(this.at + messages);
  }

  async show(at) {
    this.at = Math.max(0, Math.min(this.lastAt, at));
    byId("slider").value = this.at;
    for (const id of ["first", "back"]) byId(id).disabled = this.at === 0;
    for (const id of ["next", "last"]) byId(id).disabled = this.at === this.lastAt;
    this.stream.show(this.at);
    const call = ++this.calls;
    const picture = await this.stream.picture(this.at);
    if (call !== this.calls) return;
    this.drawPicture(picture);
    this.drawMap();
  }

  async play() {
    const turn = this.playing ? null : {};
    this.playing = turn;
    byId("play").textContent = turn ? "Pause" : "Play";
    if (turn && this.at === this.lastAt) await this.show(0);
    while (turn && turn === this.playing) {
      if (this.at === this.lastAt) return this.play();
      await Promise.all([this.show(this.at + 1), new Promise((done) => setTimeout(done, this.stepMs))]);
    }
  }

  /** Small pictures are enlarged. */
  drawPicture(picture) {
    const canvas = byId("picture");
    canvas.hidden = !picture;
    this.drawn = picture ? this.at : -1;
    if (!picture) return;
    canvas.width = picture.width;
    canvas.height = picture.height;
    canvas.getContext("2d").drawImage(picture, 0, 0);
    const times = Math.max(1, Math.floor(480 / picture.width));
    canvas.style.width = `${times * picture.width}px`;
    canvas.style.imageRendering = times > 1 ? "pixelated" : "auto";
  }

  /** The changed blocks on a pale picture, with a letter where there is room. */
  drawMap() {
    const canvas = byId("map"), blocks = this.stream.blocks(this.at);
    canvas.hidden = !blocks;
    if (!blocks) return;
    const tallest = 480, dots = window.devicePixelRatio || 1;
    const room = canvas.parentElement.clientWidth;
    const scale = Math.min(room / blocks.width, tallest / blocks.height);
    canvas.style.width = `${blocks.width * scale}px`;
    canvas.width = Math.ceil(blocks.width * scale * dots);
    canvas.height = Math.ceil(blocks.height * scale * dots);
    const pen = canvas.getContext("2d");
    pen.scale(scale * dots, scale * dots);
    if (!byId("picture").hidden) {
      pen.globalAlpha = 0.3;
      pen.drawImage(byId("picture"), 0, 0, blocks.width, blocks.height);
      pen.globalAlpha = 1;
    }
    const style = getComputedStyle(canvas);
    for (const [cell, kind] of blocks.cells) {
      this.drawCell(pen, this.box(blocks, cell), this.stream.kinds[kind], style, scale);
    }
    if (blocks.failed !== null) {
      const failed = {letter: "!", color: "bad"};
      this.drawCell(pen, this.box(blocks, blocks.failed), failed, style, scale);
    }
  }

  drawCell(pen, {left, top, width, height}, kind, style, scale) {
    const color = (name) => style.getPropertyValue(`--${name}`);
    const gap = Math.min(width, height) * scale > 6 ? 1 / scale : 0;
    pen.fillStyle = color(kind.color);
    pen.fillRect(left, top, width - gap, height - gap);
    if (kind.striped) {
      pen.fillStyle = color("stripe");
      for (let y = 0; y < height - gap; y += 6 / scale) {
        pen.fillRect(left, top + y, width - gap, Math.min(2 / scale, height - gap - y));
      }
    }
    const size = Math.min(width, height, 26 / scale) * 0.55;
    if (size * scale < 6.5) return;
    pen.fillStyle = color("letter");
    pen.font = `600 ${size}px ui-monospace, "DejaVu Sans Mono", monospace`;
    pen.textAlign = "center";
    pen.textBaseline = "middle";
    pen.fillText(kind.letter, left + width / 2, top + height / 2);
  }

  /** A cell in the picture; the last row, at the top, and the last column may be cut. */
  box({width, height, blockWidth, blockHeight, columns}, cell) {
    const left = cell % columns * blockWidth;
    const bottom = height - Math.floor(cell / columns) * blockHeight;
    const top = Math.max(0, bottom - blockHeight);
    return {left, top, width: Math.min(blockWidth, width - left), height: bottom - top};
  }

  /** The cell under the pointer, which is over the picture or the map; null outside the grid. */
  cellAt(event) {
    const blocks = this.stream.blocks(this.at), frame = event.target.getBoundingClientRect();
    if (!blocks) return null;
    const x = (event.clientX - frame.left) / frame.width * blocks.width;
    const y = (frame.bottom - event.clientY) / frame.height * blocks.height;
    if (x < 0 || y < 0 || x >= blocks.width || y >= blocks.height) return null;
    return Math.floor(y / blocks.blockHeight) * blocks.columns + Math.floor(x / blocks.blockWidth);
  }
}
