// How many pixels the picture has. A graphics card smooths edges while it draws. Where the processor has to draw, that takes
// longer than everything else: there a picture that changes is drawn without, and again in twice the pixels once it rests.

const REST = 250; // ms
const MOST_PIXELS = 8e6;

// Whether the processor draws, as far as the browser tells.
export function drawsInSoftware(gl) {
  const names = gl.getExtension('WEBGL_debug_renderer_info');
  const renderer = gl.getParameter(names ? names.UNMASKED_RENDERER_WEBGL : gl.RENDERER);
  return /swiftshader|llvmpipe|softpipe|software|basic render/i.test(renderer);
}

export class Sharpness {
  // `resize(ratio)` gives the picture so many pixels per CSS pixel, `isMoving()` tells whether more pictures follow at once,
  // and `draw()` draws it.
  constructor(isSoftware, { resize, isMoving, draw }) {
    this.isSoftware = isSoftware;
    this.resize = resize;
    this.isMoving = isMoving;
    this.draw = draw;
    this.timer = null;
  }

  // Whether the picture is as sharp as it will be.
  get isFinal() {
    return this.timer === null;
  }

  // To be called before a picture is drawn that differs from the last one.
  changed() {
    this.resize(this.isSoftware ? 1 : displayRatio());
    if (!this.isSoftware) return;
    clearTimeout(this.timer);
    this.timer = setTimeout(() => this.rest(), REST);
  }

  rest() {
    if (this.isMoving()) {
      this.changed();
      return;
    }
    this.timer = null;
    this.resize(2);
    this.draw();
  }
}

// Device pixels per CSS pixel.
export function displayRatio() {
  return Math.min(window.devicePixelRatio || 1, 2);
}

// The size in pixels of a picture of so many CSS pixels.
export function pixelSize(width, height, ratio) {
  const most = Math.sqrt(MOST_PIXELS / Math.max(1, width * height));
  const used = Math.min(ratio, Math.max(1, most));
  return [Math.max(1, Math.floor(width * used)), Math.max(1, Math.floor(height * used))];
}
