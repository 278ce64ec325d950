// Starts the page: reads the scene, draws its first step, and connects the controls with the picture.

import { showCard } from './card.js';
import { ColourControls } from './colour_controls.js';
import { Chunks } from './decode.js';
import { icon, find, make, setOptions, setTerms } from './dom.js';
import { drawOverlay, LEGEND_HEIGHT } from './overlay.js';
import { PartsTree } from './parts_tree.js';
import { pick } from './picking.js';
import { savePicture } from './saved_picture.js';
import { displayRatio, drawsInSoftware } from './sharpness.js';
import { Surfaces } from './surfaces.js';
import { formatNumber } from './ticks.js';
import { Viewer } from './viewer.js';

const FAINT_OPACITY = 0.1; // as render/scene.cpp draws it
const PLAY_INTERVAL = 400; // ms
const DARK = [0.078, 0.094, 0.114]; // style.css has it as --surface
const TOOLBAR_HEIGHT = 64; // CSS pixels, with what is around it
const HOUSE = 'M3 10l7-6 7 6M5 9v7h10V9';

class Page {
  constructor(description, isSoftware) {
    this.about = description;
    this.surfaces = new Surfaces(description.scene, new Chunks(document.querySelectorAll('script.chunk')));
    this.timer = null; // of the next step, while playing
    this.viewer = new Viewer(find('view'), description.undefinedColour, isSoftware, {
      isPlaying: () => this.timer !== null,
      onRest: () => this.drawOver(),
    });
    this.darkness = window.matchMedia('(prefers-color-scheme: dark)');
    this.step = 0;
    this.turn = 0;
    this.isBehind = false; // what is shown is not yet what was asked for
    this.shown = []; // per part: { surface, values } at the step
    this.picked = null;
    this.looks = description.parts.map(({ shown, faint }) => ({
      isShown: shown,
      opacity: faint ? FAINT_OPACITY : 1,
      isColoured: !faint,
    }));
    const { start } = description;
    this.colours = {
      variable: start.variable,
      component: start.component,
      map: Math.max(0, description.maps.findIndex(({ name }) => name === start.colours)),
      range: start.range,
    };
    description.parts.forEach(() => this.viewer.addPart());
  }

  async start() {
    this.showTexts();
    this.makeControls();
    await this.load(++this.turn);
    find('message').hidden = true;
    this.look(this.about.start.from, this.about.start.up);
    this.watchSize();
    this.viewer.camera.onModified(() => this.drawOver());
    this.darkness.addEventListener('change', () => this.update());
  }

  watchSize() {
    const view = find('view');
    const size = () => `${view.clientWidth} x ${view.clientHeight}`;
    let drawn = size();
    new ResizeObserver(() => {
      if (size() === drawn) return;
      drawn = size();
      // A view that was not moved since is made to fit again.
      if (this.lookedFrom && this.viewer.place === this.lookedFrom.place) this.look(this.lookedFrom.from, this.lookedFrom.up);
      else this.render();
    }).observe(view);
  }

  // What the axes are called: as on the parts that are shown, if these agree.
  get axes() {
    const { parts } = this.about.scene.steps[this.step];
    const shown = this.about.parts.filter((_, part) => this.looks[part].isShown && parts[part]);
    const [first] = shown;
    return first && shown.every(({ axes }) => String(axes) === String(first.axes)) ? first.axes : this.about.components;
  }

  // For whoever drives the page: of which step the picture is, and whether it is the one that stays.
  announce() {
    const { dataset } = document.documentElement;
    if (dataset.state === 'failed') return;
    dataset.state = this.isBehind || !this.viewer.isAtRest ? 'busy' : 'ready';
    dataset.theme = this.darkness.matches ? 'dark' : 'light';
  }

  showTexts() {
    const { about } = this;
    find('title').textContent = about.title ?? about.file;
    document.title = about.title ?? about.file;
    find('subtitle').textContent = [about.title ? about.file : '', about.date, about.solver].filter(Boolean).join(' \u00b7 ');
    find('licences').textContent = find('licence-texts').textContent;
    const { steps } = about.scene;
    setTerms(find('about'), [
      ['File', about.file],
      ['Date', about.date],
      ['Solver', about.solver],
      ['Comments', about.comments],
      ['Steps', steps.length === 1 ? `step ${steps[0].step}` : `${steps.length}, ${steps[0].step} to ${steps.at(-1).step}`],
      ['Coordinates', about.scene.coordinateBits ? `${about.scene.coordinateBits} bits` : 'single precision'],
      ['Values', about.scene.valueBits ? `${about.scene.valueBits} bits` : 'single precision'],
      ['Page by', about.writer],
    ]);
  }

  makeControls() {
    this.tree = new PartsTree(this.about.parts, this.about.tree, this.looks, () => this.update());
    const fitted = ({ variable, component }) => this.fittedRange(variable, component);
    this.controls = new ColourControls(this.about, this.colours, fitted, () => this.update());
    this.makeTimeControls();
    this.makeViewControls();
    this.makeClipControls();
    find('edges').checked = this.about.start.edges;
    find('edges').addEventListener('change', () => this.update());
    find('save').addEventListener('click', () => this.savePicture());
    find('card-close').addEventListener('click', () => this.unpick());
    find('panel-toggle').addEventListener('click', () => this.togglePanel());
    if (window.innerWidth < 720) this.togglePanel();
    this.bindClicks();
    document.addEventListener('keydown', (event) => this.takeKey(event));
  }

  togglePanel() {
    const isHidden = document.body.classList.toggle('without-panel');
    find('panel-toggle').setAttribute('aria-expanded', String(!isHidden));
  }

  makeTimeControls() {
    const { stepCount } = this.surfaces;
    find('time').hidden = stepCount < 2;
    const slider = find('step');
    slider.max = stepCount - 1;
    slider.addEventListener('input', () => this.goTo(Number(slider.value)));
    find('play').addEventListener('click', () => this.play(this.timer === null));
    this.showStep();
  }

  showStep() {
    const { step, time } = this.about.scene.steps[this.step];
    const text = `Step ${step}, t = ${formatNumber(time)}`;
    find('step').value = this.step;
    find('step').setAttribute('aria-valuetext', text);
    find('step-label').textContent = text;
  }

  async goTo(step) {
    this.step = (step + this.surfaces.stepCount) % this.surfaces.stepCount;
    this.showStep();
    await this.update();
  }

  play(plays) {
    clearTimeout(this.timer);
    this.timer = null;
    document.body.classList.toggle('playing', plays);
    find('play').setAttribute('aria-label', plays ? 'Stop' : 'Play');
    if (!plays) return;
    const next = async () => {
      await this.goTo(this.step + 1);
      if (this.timer !== null) this.timer = setTimeout(next, PLAY_INTERVAL);
    };
    this.timer = setTimeout(next, PLAY_INTERVAL);
  }

  makeViewControls() {
    const sides = [0, 1, 2].map((axis) => ['', '', (event) => this.lookAlong(axis, event.shiftKey)]);
    for (const [text, title, act] of [...sides, ['iso', 'Isometric view (I)', () => this.lookIsometric()]]) {
      const button = make('button', { textContent: text, title, 'aria-label': title });
      button.addEventListener('click', act);
      find('views').append(button);
    }
    const reset = make('button', { title: 'Reset the view (R)', 'aria-label': 'Reset the view' });
    reset.append(icon(HOUSE));
    reset.addEventListener('click', () => this.resetView());
    find('views').append(reset);
  }

  // Writes the axes' names where they are read.
  nameAxes() {
    const { axes } = this;
    axes.forEach((name, axis) => {
      const button = find('views').children[axis];
      button.textContent = name;
      button.title = `Look along ${name} (${'XYZ'[axis]}; the other side with Shift)`;
      button.setAttribute('aria-label', button.title);
      find('clip-axis').options[axis + 1].textContent = `Across ${name}`;
    });
  }

  lookAlong(axis, isOtherSide) {
    const from = [0, 0, 0];
    from[axis] = isOtherSide ? -1 : 1;
    this.look(from, axis === 2 ? [0, 1, 0] : [0, 0, 1]);
  }

  lookIsometric() {
    const azimuth = -Math.PI / 3;
    const elevation = Math.PI / 6;
    const level = Math.cos(elevation);
    this.look([level * Math.cos(azimuth), level * Math.sin(azimuth), Math.sin(elevation)], [0, 0, 1]);
  }

  resetView() {
    this.look(this.about.start.from, this.about.start.up);
  }

  look(from, up) {
    const height = Math.max(1, find('view').clientHeight);
    const bottom = this.colours.variable === null ? 0.04 : (LEGEND_HEIGHT + 10) / height;
    const top = Math.min(0.2, TOOLBAR_HEIGHT / height);
    this.viewer.fit(from, up, { top, bottom, side: 0.04 });
    this.lookedFrom = { from, up, place: this.viewer.place };
    this.render();
  }

  makeClipControls() {
    setOptions(find('clip-axis'), [['', 'Off'], [0, ''], [1, ''], [2, '']]); // nameAxes() names them
    find('clip-axis').addEventListener('change', ({ target }) => {
      // Cuts away what is in front, until it is told otherwise.
      find('clip-flip').checked = target.value !== '' && this.viewer.axes().from[Number(target.value)] < 0;
    });
    for (const [id, event] of [
      ['clip-axis', 'change'],
      ['clip-place', 'input'],
      ['clip-flip', 'change'],
    ]) {
      find(id).addEventListener(event, () => {
        this.clip();
        this.render();
      });
    }
  }

  clip() {
    const { value } = find('clip-axis');
    find('clip').hidden = value === '';
    const box = value === '' ? null : this.viewer.bounds();
    if (!box) {
      this.viewer.setClip(null);
      return;
    }
    const axis = Number(value);
    const normal = [0, 0, 0];
    const origin = [0, 0, 0];
    origin[axis] = box[2 * axis] + (Number(find('clip-place').value) / 1000) * (box[2 * axis + 1] - box[2 * axis]);
    normal[axis] = find('clip-flip').checked ? -1 : 1;
    this.viewer.setClip({ normal, origin });
    find('clip-value').textContent = formatNumber(origin[axis], 4);
  }

  bindClicks() {
    const view = find('view');
    let down = null;
    view.addEventListener('pointerdown', (event) => {
      down = event.isPrimary && event.button === 0 ? [event.clientX, event.clientY] : null;
    }, true);
    view.addEventListener('pointerup', (event) => {
      if (!down || Math.hypot(event.clientX - down[0], event.clientY - down[1]) > 5) return;
      const box = view.getBoundingClientRect();
      this.pickAt(event.clientX - box.left, event.clientY - box.top);
    }, true);
  }

  pickAt(x, y) {
    const hit = pick(this.viewer, x, y);
    if (hit) {
      this.picked = { part: hit.part, face: hit.face, point: hit.point };
      this.showPicked();
    } else {
      this.unpick();
    }
    this.drawOver();
  }

  unpick() {
    this.picked = null;
    find('card').hidden = true;
    this.drawOver();
  }

  // What was clicked, as it is at the step.
  showPicked() {
    if (!this.picked) return;
    const { part, face, point } = this.picked;
    const { surface, values } = this.shown[part] ?? {};
    if (!surface || 3 * point >= surface.points.length || face + 1 >= surface.faces.starts.length) {
      this.unpick();
      return;
    }
    this.picked.place = Array.from(surface.points.subarray(3 * point, 3 * point + 3));
    const variable = this.colours.variable === null ? null : this.about.variables[this.colours.variable];
    showCard(this.about, this.picked, surface, variable && values ? { variable, ...values } : null);
    // On a phone the card is where it does not hide the place.
    const [, y] = this.viewer.project(this.picked.place);
    find('card').classList.toggle('above', y > find('view').clientHeight / 2);
  }

  takeKey(event) {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const { target } = event;
    if (target instanceof HTMLSelectElement || (target instanceof HTMLInputElement && target.type !== 'checkbox')) return;
    const isButton = target instanceof HTMLButtonElement || target instanceof HTMLInputElement || target.tagName === 'SUMMARY';
    const key = event.key.toLowerCase();
    const actions = {
      arrowleft: () => this.goTo(this.step - 1),
      arrowright: () => this.goTo(this.step + 1),
      ' ': isButton ? null : () => this.surfaces.stepCount > 1 && this.play(this.timer === null),
      x: () => this.lookAlong(0, event.shiftKey),
      y: () => this.lookAlong(1, event.shiftKey),
      z: () => this.lookAlong(2, event.shiftKey),
      i: () => this.lookIsometric(),
      r: () => this.resetView(),
      e: () => find('edges').click(),
      c: () => this.nextClip(),
      p: () => this.savePicture(),
      escape: () => this.unpick(),
    };
    if (!actions[key]) return;
    event.preventDefault();
    actions[key]();
  }

  nextClip() {
    const select = find('clip-axis');
    select.selectedIndex = (select.selectedIndex + 1) % select.options.length;
    select.dispatchEvent(new Event('change'));
  }

  fittedRange(variable, component) {
    if (variable === null) return null;
    const shown = this.looks.map((look, part) => (look.isShown && look.isColoured ? part : -1)).filter((part) => part >= 0);
    const all = this.looks.map((_, part) => part);
    const range = this.surfaces.range(variable, component, shown) ?? this.surfaces.range(variable, component, all);
    if (!range || range[0] < range[1]) return range;
    const margin = range[0] === 0 ? 0.5 : Math.abs(range[0]) / 2;
    return [range[0] - margin, range[1] + margin];
  }

  // Brings the picture to the step and what the controls say. When it is called again meanwhile, the later call wins.
  async update() {
    const turn = ++this.turn;
    this.isBehind = true;
    this.announce();
    try {
      await this.load(turn);
    } catch (error) {
      tellFailure(error);
    }
    if (turn !== this.turn) return;
    this.isBehind = false;
    this.render();
  }

  // Gives the viewer what it is to show, unless it is asked for something else meanwhile.
  async load(turn) {
    const { step, colours } = this;
    const shown = await Promise.all(
      this.looks.map(async (look, part) => ({
        surface: look.isShown ? await this.surfaces.surface(part, step) : null,
        values:
          look.isShown && colours.variable !== null
            ? await this.surfaces.values(colours.variable, colours.component, part, step)
            : null,
      })),
    );
    if (turn !== this.turn) return;
    this.shown = shown.map((of) => ({ ...of, hasUndefined: !of.values || of.values.numbers.some(Number.isNaN) }));
    const look = JSON.stringify([colours.map, colours.range]);
    if (colours.variable !== null && look !== this.lastLook) {
      this.viewer.setColours(this.controls.map, colours.range);
      this.lastLook = look;
    }
    shown.forEach(({ surface, values }, part) => {
      this.viewer.setPart(part, surface, values, {
        ...this.looks[part],
        hasVariable: colours.variable !== null,
        showsEdges: find('edges').checked,
        isDark: this.darkness.matches,
      });
    });
    this.tree.setAbsent(this.about.scene.steps[step].parts.map((part) => part === null));
    document.documentElement.dataset.step = this.about.scene.steps[step].step;
    this.nameAxes();
    this.clip();
    this.showPicked();
    this.surfaces.prepare(colours.variable, (step + 1) % this.surfaces.stepCount);
  }

  render() {
    this.viewer.setBackground(this.darkness.matches ? DARK : [1, 1, 1]);
    this.viewer.render();
    performance.clearMarks('drawn');
    performance.mark('drawn');
    this.drawOver();
  }

  overlayScene() {
    const { colours } = this;
    const legend = colours.variable === null ? null : {
      title: this.controls.title,
      colours: this.controls.map,
      low: colours.range[0],
      high: colours.range[1],
      undefinedColour: `rgb(${this.about.undefinedColour.map((c) => Math.round(255 * c)).join(', ')})`,
      hasUndefined: this.shown.some(
        ({ surface, hasUndefined }, part) => surface && this.looks[part].isColoured && hasUndefined,
      ),
    };
    return { isDark: this.darkness.matches, legend, viewer: this.viewer, axes: this.axes, mark: this.picked?.place };
  }

  // Draws what lies over the picture.
  drawOver() {
    const view = find('view');
    const canvas = find('overlay');
    const ratio = displayRatio();
    const [width, height] = [view.clientWidth, view.clientHeight];
    if (canvas.width !== Math.floor(width * ratio) || canvas.height !== Math.floor(height * ratio)) {
      canvas.width = Math.floor(width * ratio);
      canvas.height = Math.floor(height * ratio);
      canvas.style.width = `${width}px`;
      canvas.style.height = `${height}px`;
    }
    const context = canvas.getContext('2d');
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    drawOverlay(context, width, height, this.overlayScene());
    this.announce();
  }

  savePicture() {
    const { about } = this;
    const { step, time } = about.scene.steps[this.step];
    savePicture(this.viewer, {
      title: about.title ?? `${about.file}    step ${step}    t = ${formatNumber(time)}`,
      ink: this.darkness.matches ? '#e7ebf0' : '#1b2129',
      name: `${about.file.replace(/\.[^.]*$/, '')}_${step}.png`,
      drawOver: (context, width, height) => drawOverlay(context, width, height, this.overlayScene()),
    });
  }
}

function tellFailure(error) {
  const message = find('message');
  message.hidden = false;
  message.textContent =
    typeof DecompressionStream === 'undefined'
      ? 'This browser is too old for this page: it needs one of 2023 or later.'
      : `The page cannot be shown: ${error.message}`;
  document.documentElement.dataset.state = 'failed';
  console.error(error);
}

try {
  const gl = document.createElement('canvas').getContext('webgl2');
  if (!gl) throw new Error('this browser has no WebGL 2');
  const page = new Page(JSON.parse(find('scene').textContent), drawsInSoftware(gl));
  gl.getExtension('WEBGL_lose_context')?.loseContext();
  page.start().catch(tellFailure);
} catch (error) {
  tellFailure(error);
}
