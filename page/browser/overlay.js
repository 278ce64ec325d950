// What is drawn over the picture: the colour bar, the axes, and a mark where the user has clicked. On a canvas, so that
// saved pictures show the same.

import { makeTicks } from './ticks.js';

const MOST_TICKS = 8;
const LABEL_GAP = 14;
const FONT = 'system-ui, "Segoe UI", Roboto, "Noto Sans", "Liberation Sans", Arial, sans-serif';
const AXIS_COLOURS = { light: ['#c62f2f', '#23832f', '#2459c9'], dark: ['#ff7b72', '#5bc46a', '#79a8ff'] };

// Draws into a context that is `width` x `height` CSS pixels large. `scene` is { isDark, legend, viewer, axes, mark,
// title }; legend (may be null) is { title, colours, low, high, undefinedColour, hasUndefined }.
export function drawOverlay(context, width, height, scene) {
  const ink = scene.isDark ? '#e7ebf0' : '#1b2129';
  context.clearRect(0, 0, width, height);
  context.textBaseline = 'alphabetic';
  if (scene.legend) drawLegend(context, width, height, scene.legend, ink);
  drawAxes(context, height, scene, ink);
  if (scene.mark) drawMark(context, scene.viewer.project(scene.mark), scene.isDark);
}

// The height, in CSS pixels, that the colour bar takes at the lower edge.
export const LEGEND_HEIGHT = 74;

function drawLegend(context, width, height, legend, ink) {
  const left0 = width < 560 ? 104 : Math.max(120, 0.27 * width);
  const right0 = width < 560 ? 28 : Math.max(60, 0.27 * width);
  const barWidth = Math.max(60, width - left0 - right0);
  const barHeight = 14;
  const top = height - 40;
  context.fillStyle = ink;
  context.font = `600 13px ${FONT}`;
  context.textAlign = 'center';
  context.fillText(legend.title, left0 + barWidth / 2, top - 9, width - 24);
  context.drawImage(bar(legend.colours), left0, top, barWidth, barHeight);
  context.strokeStyle = ink;
  context.fillStyle = ink;
  context.lineWidth = 1;
  context.font = `12px ${FONT}`;
  const place = (value) => left0 + ((value - legend.low) / (legend.high - legend.low)) * barWidth;
  for (const { value, label } of fittingTicks(context, legend, place)) {
    const x = place(value);
    context.beginPath();
    context.moveTo(x, top + barHeight);
    context.lineTo(x, top + barHeight + 4);
    context.stroke();
    context.fillText(label, x, top + barHeight + 17);
  }
  if (legend.hasUndefined) {
    const x = width < 560 ? left0 : left0 + barWidth + 20;
    const y = width < 560 ? top - 34 : top;
    context.fillStyle = legend.undefinedColour;
    context.fillRect(x, y, 14, 14);
    context.fillStyle = ink;
    context.textAlign = 'left';
    context.fillText('undefined', x + 20, y + 11);
  }
}

// As many ticks as have room for their labels.
function fittingTicks(context, { low, high }, place) {
  for (let most = MOST_TICKS; most > 2; --most) {
    const ticks = makeTicks(low, high, most);
    const widest = Math.max(...ticks.map(({ label }) => context.measureText(label).width));
    if (ticks.length < 2 || place(ticks[1].value) - place(ticks[0].value) >= widest + LABEL_GAP) return ticks;
  }
  return makeTicks(low, high, 2);
}

const bars = new WeakMap();

// The colours as an image of one row.
function bar(colours) {
  if (!bars.has(colours)) bars.set(colours, makeBar(colours));
  return bars.get(colours);
}

function makeBar(colours) {
  const canvas = document.createElement('canvas');
  canvas.width = colours.length / 3;
  canvas.height = 1;
  const context = canvas.getContext('2d');
  const image = context.createImageData(canvas.width, 1);
  for (let i = 0; i < canvas.width; ++i) {
    for (let c = 0; c < 3; ++c) image.data[4 * i + c] = colours[3 * i + c];
    image.data[4 * i + 3] = 255;
  }
  context.putImageData(image, 0, 0);
  return canvas;
}

function drawAxes(context, height, { viewer, axes, isDark }, ink) {
  const { right, up, from } = viewer.axes();
  const length = 30;
  const middle = [48, height - 48];
  const colours = AXIS_COLOURS[isDark ? 'dark' : 'light'];
  const order = [0, 1, 2].sort((a, b) => from[a] - from[b]);
  context.lineCap = 'round';
  context.textAlign = 'center';
  context.font = `600 12px ${FONT}`;
  for (const axis of order) {
    const x = right[axis] * length;
    const y = -up[axis] * length;
    const reach = Math.hypot(x, y);
    context.strokeStyle = colours[axis];
    context.fillStyle = colours[axis];
    context.lineWidth = 2.5;
    context.beginPath();
    context.moveTo(middle[0], middle[1]);
    context.lineTo(middle[0] + x, middle[1] + y);
    context.stroke();
    if (reach > 6) {
      const angle = Math.atan2(y, x);
      context.beginPath();
      context.moveTo(middle[0] + x + 7 * Math.cos(angle), middle[1] + y + 7 * Math.sin(angle));
      for (const side of [2.4, -2.4])
        context.lineTo(middle[0] + x + 5 * Math.cos(angle + side), middle[1] + y + 5 * Math.sin(angle + side));
      context.fill();
    }
    const beyond = reach > 6 ? (length * Math.min(1, reach / length) + 13) / reach : 0;
    context.fillStyle = ink;
    if (reach > 6) context.fillText(axes[axis], middle[0] + x * beyond, middle[1] + y * beyond + 4);
  }
}

function drawMark(context, [x, y], isDark) {
  for (const [colour, width] of [
    [isDark ? '#000000' : '#ffffff', 5],
    [isDark ? '#ffffff' : '#111111', 2],
  ]) {
    context.strokeStyle = colour;
    context.lineWidth = width;
    context.beginPath();
    context.arc(x, y, 6, 0, 2 * Math.PI);
    context.stroke();
  }
}
