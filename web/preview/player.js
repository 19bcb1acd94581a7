import { AnimationMixer, LoopRepeat } from "three";
import { byId, make, makeChoice, makeToggle } from "./dom.js";
import { plural } from "./format.js";

// Plays clips and shows the frame, counted as in the files.

const speeds = [0.1, 0.25, 0.5, 1, 2, 4];

export class Player {
  /** "clips" are rows {clip, name, frames, rate, loop}; "onPose" is called when something has moved. */
  constructor(root, clips, onPose) {
    this.clips = clips;
    this.onPose = onPose;
    this.mixer = new AnimationMixer(root);
    this.isPlaying = false;
    this.isLoop = true;
    this.speed = 1;
    this.frame = 0;
    this.build();
    this.choose(0);
  }

  build() {
    this.button = make("button", { type: "button", className: "play", title: "Play or pause (space)" });
    this.button.addEventListener("click", () => this.setPlaying(!this.isPlaying));
    this.slider = make("input", { type: "range", id: "frame", min: "0", step: "any", "aria-label": "Frame" });
    this.slider.addEventListener("input", () => this.goTo(Math.round(Number(this.slider.value))));
    this.label = make("strong", {});
    this.end = make("span", {});
    this.loop = makeToggle("Loop", "Start again at the end (L)", true, (isOn) => (this.isLoop = isOn));
    const names = this.clips.map((row) => row.name);
    const parts = [this.button, this.slider,
      make("span", { className: "frames" }, "Frame ", this.label, this.end), this.loop,
      makeChoice("Speed", speeds.map((speed) => speed + "×"), speeds.indexOf(1), (index) => (this.speed = speeds[index]))];
    if (names.length > 1) {
      parts.push(makeChoice("Clip", names, 0, (index) => this.choose(index)));
    } else {
      parts.push(make("span", { className: "tag" }, names[0] || plural(this.clips[0].frames, "frame")));
    }
    const bar = byId("player");
    bar.replaceChildren(...parts);
    bar.hidden = false;
    document.addEventListener("keydown", (event) => this.onKey(event));
  }

  choose(index) {
    this.mixer.stopAllAction();
    this.row = this.clips[index];
    this.action = this.mixer.clipAction(this.row.clip);
    this.action.setLoop(LoopRepeat).play();
    this.action.paused = true; // time is set, never run, so that a frame is exactly that frame
    this.isLoop = this.row.loop;
    this.loop.setAttribute("aria-pressed", String(this.isLoop));
    this.slider.max = String(this.row.frames);
    this.end.textContent = " / " + this.row.frames;
    this.goTo(0);
    this.showState();
  }

  showState() {
    this.button.textContent = this.isPlaying ? "❚❚ Pause" : "▶ Play";
    this.button.setAttribute("aria-pressed", String(this.isPlaying));
  }

  setPlaying(isPlaying) {
    this.isPlaying = isPlaying;
    if (isPlaying && !this.isLoop && this.frame >= this.row.frames) {
      this.goTo(0);
    }
    this.last = performance.now();
    this.showState();
    this.onPose();
  }

  goTo(frame) {
    this.frame = Math.min(this.row.frames, Math.max(0, frame));
    this.action.time = Math.min(this.frame / this.row.rate, this.row.clip.duration);
    this.mixer.update(0);
    this.slider.value = String(this.frame);
    this.label.textContent = String(Math.floor(this.frame + 1e-4));
    this.onPose();
  }

  /** To be called for each picture; tells whether the next is wanted. */
  advance(now) {
    if (!this.isPlaying) {
      return false;
    }
    const seconds = Math.max(0, now - this.last) / 1000;
    this.last = now;
    let frame = this.frame + seconds * this.row.rate * this.speed;
    if (frame >= this.row.frames) {
      frame = this.isLoop && this.row.frames > 0 ? frame % this.row.frames : this.row.frames;
      if (!this.isLoop) {
        this.isPlaying = false;
        this.showState();
      }
    }
    this.goTo(frame);
    return this.isPlaying;
  }

  onKey(event) {
    const isElsewhere = event.target.closest?.("input:not(#frame), select, textarea, [role=tab], summary");
    if (isElsewhere || event.ctrlKey || event.metaKey || event.altKey) {
      return;
    }
    const step = event.shiftKey ? 10 : 1;
    const now = Math.round(this.frame);
    const keys = {
      ArrowLeft: () => this.goTo(now - step),
      ArrowRight: () => this.goTo(now + step),
      Home: () => this.goTo(0),
      End: () => this.goTo(this.row.frames),
      l: () => this.loop.click(),
    };
    if (event.key === " " && !event.target.closest?.("button")) {
      keys[" "] = () => this.setPlaying(!this.isPlaying);
    }
    const act = keys[event.key];
    if (act) {
      act();
      event.preventDefault();
    }
  }
}
