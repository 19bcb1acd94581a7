import {
  DirectionalLight, HemisphereLight, MeshNormalMaterial, NeutralToneMapping, PerspectiveCamera, Raycaster, Scene,
  SRGBColorSpace, Vector2, WebGLRenderer,
} from "three";
import { OrbitControls } from "three/examples/jsm/controls/OrbitControls.js";
import { boundsOf, focusOf, frameBox, measure, setPlanes } from "./framing.js";
import { makeBones, makeGrid, makeMark, makeShapeBox } from "./overlays.js";

// The 3D view. It draws when something has changed, not all the time.

const skyIntensity = 2.6;
const clickSlack = 5; // pixels that the pointer may move and still click

export class Viewport {
  constructor(canvas) {
    this.canvas = canvas;
    this.renderer = new WebGLRenderer({ canvas, antialias: true, alpha: true, preserveDrawingBuffer: true });
    this.renderer.setPixelRatio(Math.min(devicePixelRatio, 2));
    this.renderer.outputColorSpace = SRGBColorSpace;
    this.renderer.toneMapping = NeutralToneMapping;
    this.scene = new Scene();
    this.camera = new PerspectiveCamera(38, 1, 0.1, 100);
    this.view = this.camera;
    this.controls = new OrbitControls(this.camera, canvas);
    this.controls.addEventListener("change", () => this.invalidate());
    this.normals = new MeshNormalMaterial({ side: 2 });
    this.onFrame = () => false;
    this.onPick = () => {};
    this.meshes = [];
    this.isWaiting = false;
    this.makeStudio();
    this.listen();
  }

  /** Light from everywhere, more of it from the left above: neutral, and quick on machines without a graphics card. */
  makeStudio() {
    this.sky = new HemisphereLight(0xffffff, 0xbdb5ab, skyIntensity);
    this.key = new DirectionalLight(0xfffaf2, 2.2);
    this.scene.add(this.sky, this.key, this.key.target);
    this.setSceneLights(false);
  }

  listen() {
    new ResizeObserver(() => this.resize()).observe(this.canvas.parentElement);
    let start = null;
    this.canvas.addEventListener("pointerdown", (event) => (start = event));
    this.canvas.addEventListener("pointerup", (event) => {
      const isClick = start && Math.hypot(event.clientX - start.clientX, event.clientY - start.clientY) < clickSlack;
      if (isClick && event.button === 0) {
        this.pick(event);
      }
      start = null;
    });
  }

  /**
   * Takes what is shown: {root, meshes, bones, boxes, lights}, with meshes as {object, key}. The poses are functions
   * that set one each: all that is seen in one of them comes into view. The last one stays.
   */
  show(content, poses) {
    this.content = content;
    this.scene.add(content.root);
    this.meshes = content.meshes;
    for (const { object } of this.meshes) {
      object.userData.material = object.material;
      object.frustumCulled = !object.isSkinnedMesh; // its bounds are those of one pose
    }
    for (const light of content.lights) {
      light.visible = false;
    }
    const boxes = measure(content.root, poses);
    this.box = boundsOf(content.root, boxes);
    this.addOverlays();
    this.resize();
    this.frame(focusOf(content.root, boxes));
  }

  addOverlays() {
    const { grid, cell } = makeGrid(this.box);
    this.grid = grid;
    this.cell = cell;
    this.bones = makeBones(this.content.bones);
    this.bones.group.visible = this.meshes.length === 0; // where there is nothing else to see
    this.scene.add(grid, this.bones.group);
    this.boxes = this.content.boxes.map(({ object, box }) => {
      const lines = makeShapeBox(box);
      lines.visible = false;
      object.add(lines);
      return lines;
    });
  }

  /** Brings a box into view; everything where none is given. */
  frame(box = this.box) {
    frameBox(this.camera, this.controls, box);
    this.key.position.set(-0.8, 2.2, 2.4).add(this.controls.target);
    this.key.target.position.copy(this.controls.target);
    this.invalidate();
  }

  resize() {
    const { clientWidth, clientHeight } = this.canvas.parentElement;
    if (clientWidth === 0 || clientHeight === 0) {
      return;
    }
    this.renderer.setSize(clientWidth, clientHeight, false);
    this.setAspect();
    this.draw();
  }

  setAspect() {
    const { clientWidth, clientHeight } = this.canvas.parentElement;
    const aspect = clientWidth / clientHeight;
    if (this.view.isPerspectiveCamera) {
      this.view.aspect = aspect;
    } else {
      const half = (this.view.top - this.view.bottom) / 2;
      const middle = (this.view.left + this.view.right) / 2;
      this.view.left = middle - half * aspect;
      this.view.right = middle + half * aspect;
    }
    this.view.updateProjectionMatrix();
  }

  invalidate() {
    if (!this.isWaiting) {
      this.isWaiting = true;
      requestAnimationFrame((now) => {
        this.isWaiting = false;
        if (this.onFrame(now)) {
          this.invalidate();
        }
        this.draw();
      });
    }
  }

  draw() {
    if (!this.box) {
      return;
    }
    this.scene.updateMatrixWorld();
    if (this.bones.group.visible) {
      this.bones.update();
    }
    if (this.view === this.camera) {
      setPlanes(this.camera, this.box);
    }
    this.renderer.render(this.scene, this.view);
  }

  setCamera(camera) {
    this.view = camera ?? this.camera;
    this.controls.enabled = this.view === this.camera;
    this.setAspect();
    this.invalidate();
  }

  eachMaterial(act) {
    for (const { object } of this.meshes) {
      [object.userData.material].flat().forEach(act);
    }
  }

  setWireframe(isOn) {
    this.eachMaterial((material) => (material.wireframe = isOn));
    this.normals.wireframe = isOn;
    this.invalidate();
  }

  setNormals(isOn) {
    for (const { object } of this.meshes) {
      object.material = isOn ? this.normals : object.userData.material;
    }
    this.invalidate();
  }

  setBones(isOn) {
    this.bones.group.visible = isOn;
    this.invalidate();
  }

  setBoxes(isOn) {
    this.boxes.forEach((lines) => (lines.visible = isOn));
    this.invalidate();
  }

  setGrid(isOn) {
    this.grid.visible = isOn;
    this.invalidate();
  }

  /** The scene's own lights in place of the studio's. */
  setSceneLights(isOn) {
    this.key.visible = !isOn;
    this.sky.intensity = isOn ? 0.3 : skyIntensity;
    this.content?.lights.forEach((light) => (light.visible = isOn));
    this.invalidate();
  }

  pick(event) {
    const area = this.canvas.getBoundingClientRect();
    const place = new Vector2(
      ((event.clientX - area.left) / area.width) * 2 - 1, 1 - ((event.clientY - area.top) / area.height) * 2,
    );
    const ray = new Raycaster();
    ray.setFromCamera(place, this.view);
    const candidates = this.meshes.map(({ object }) => object).filter((object) => object.visible);
    for (const object of candidates) {
      if (object.isSkinnedMesh) {
        object.computeBoundingSphere(); // of the present pose
        object.computeBoundingBox();
      }
    }
    const hit = ray.intersectObjects(candidates, false)[0];
    this.onPick(hit ? this.meshes.find(({ object }) => object === hit.object).key : null);
  }

  /** Marks the mesh of a key; null: none. */
  choose(key) {
    this.marks?.forEach((mark) => mark.removeFromParent());
    this.marks = this.meshes.filter((mesh) => key !== null && mesh.key === key).map(({ object }) => {
      const mark = makeMark(object);
      object.parent.add(mark);
      return mark;
    });
    this.invalidate();
  }
}
