// The surfaces of the parts and the values on them, step by step, out of what page/scene.cpp has written.

import { decodeFaces, decodeNumbers, sizeOfNumbers } from './decode.js';

export const MAGNITUDE = 3;

// A part at a step: faces (decodeFaces), the points before the motion of the part and, if it moves as a rigid body, the
// matrix of the motion: 3 rows of 4 numbers.
class Surface {
  constructor(faces, still, matrix) {
    this.faces = faces;
    this.still = still;
    this.matrix = matrix;
    this.moved = matrix ? null : still;
  }

  isOf(faces, still, matrix) {
    return this.faces === faces && this.still === still && this.matrix === matrix;
  }

  // Where the points are, x, y and z of each.
  get points() {
    this.moved ??= transformed(this.still, this.matrix);
    return this.moved;
  }
}

export class Surfaces {
  constructor(scene, chunks) {
    this.scene = scene;
    this.chunks = chunks;
    this.faces = new Map(); // by where they stand in the data, as several steps share them
    this.lastSurfaces = []; // per part, as most do not change from step to step
    this.lastPoints = [];
    this.lastValues = [];
  }

  get stepCount() {
    return this.scene.steps.length;
  }

  // A part at a step, or null where the step does not have it. Faces and points that did not change are the same objects.
  async surface(part, step) {
    const described = this.scene.steps[step].parts[part];
    if (!described) return null;
    const [chunk, offset, faceCount, pointCount, hasNodes] = described.faces;
    const key = `${chunk}/${offset}`;
    if (!this.faces.has(key)) {
      const bytes = await this.chunks.get(chunk);
      this.faces.set(key, decodeFaces(bytes, offset, faceCount, pointCount, hasNodes));
    }
    const faces = this.faces.get(key);
    const still = await this.points(part, described.points);
    const last = this.lastSurfaces[part];
    if (last?.isOf(faces, still, described.matrix)) return last;
    const surface = new Surface(faces, still, described.matrix);
    this.lastSurfaces[part] = surface;
    return surface;
  }

  async points(part, described) {
    const key = JSON.stringify(described);
    if (this.lastPoints[part]?.key === key) return this.lastPoints[part].xyz;
    const [chunk, offset, count, ranges] = described;
    const bits = this.scene.coordinateBits;
    const bytes = await this.chunks.get(chunk);
    const xyz = new Float32Array(3 * count);
    for (let axis = 0; axis < 3; ++axis) {
      const from = offset + axis * sizeOfNumbers(count, bits);
      const numbers = decodeNumbers(bytes, from, count, ranges[2 * axis], ranges[2 * axis + 1], bits);
      for (let i = 0; i < count; ++i) xyz[3 * i + axis] = numbers[i];
    }
    this.lastPoints[part] = { key, xyz };
    return xyz;
  }

  // Unpacks ahead what a step needs, so that it is there when the step is asked for.
  prepare(variable, step) {
    const { parts, values } = this.scene.steps[step];
    const blocks = parts.flatMap((part) => (part ? [part.faces, part.points] : []));
    if (variable !== null) blocks.push(...values[variable].filter(Boolean));
    for (const chunk of new Set(blocks.map(([number]) => number))) {
      this.chunks.get(chunk).catch(() => {}); // whoever asks for it again is told
    }
  }

  // The values as { perFace, numbers, components }, or null where there are none. The numbers are those of one component
  // or of the magnitude, the components all that there are.
  async values(variable, component, part, step) {
    const described = this.scene.steps[step].values[variable][part];
    if (!described) return null;
    const key = JSON.stringify([described, component]);
    if (this.lastValues[part]?.key === key) return this.lastValues[part];
    const values = { key, ...(await this.decodeValues(described, component)) };
    this.lastValues[part] = values;
    return values;
  }

  async decodeValues([chunk, offset, count, ranges, perFace], component) {
    const bits = this.scene.valueBits;
    const bytes = await this.chunks.get(chunk);
    const decode = (c) =>
      decodeNumbers(bytes, offset + c * sizeOfNumbers(count, bits), count, ranges[2 * c], ranges[2 * c + 1], bits);
    if (ranges.length === 2) return { perFace, numbers: decode(0), components: null };
    const components = [decode(0), decode(1), decode(2)];
    const numbers = component === MAGNITUDE ? magnitudes(components) : components[component];
    return { perFace, numbers, components };
  }

  // The lowest and the highest value on these parts at all steps, or null without any.
  range(variable, component, parts) {
    let low = Infinity;
    let high = -Infinity;
    for (const step of this.scene.steps) {
      for (const part of parts) {
        const described = step.values[variable][part];
        if (!described) continue;
        const ranges = described[3];
        const place = ranges.length === 2 ? 0 : component;
        if (ranges[2 * place] === null) continue; // nothing but undefined values
        low = Math.min(low, ranges[2 * place]);
        high = Math.max(high, ranges[2 * place + 1]);
      }
    }
    return low <= high ? [low, high] : null;
  }
}

function transformed(xyz, m) {
  const moved = new Float32Array(xyz.length);
  for (let i = 0; i < xyz.length; i += 3) {
    const x = xyz[i];
    const y = xyz[i + 1];
    const z = xyz[i + 2];
    moved[i] = m[0] * x + m[1] * y + m[2] * z + m[3];
    moved[i + 1] = m[4] * x + m[5] * y + m[6] * z + m[7];
    moved[i + 2] = m[8] * x + m[9] * y + m[10] * z + m[11];
  }
  return moved;
}

function magnitudes([x, y, z]) {
  const lengths = new Float32Array(x.length);
  for (let i = 0; i < lengths.length; ++i) lengths[i] = Math.sqrt(x[i] * x[i] + y[i] * y[i] + z[i] * z[i]);
  return lengths;
}
