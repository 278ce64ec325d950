// The card with what the user has clicked: part, node, element, coordinates and values.

import { find, setTerms } from './dom.js';
import { formatNumber } from './ticks.js';

const FULL_DIGITS = 7;
const COMPACT_DIGITS = 5; // what 16 bits are good for

function digits(bits) {
  return bits === 0 ? FULL_DIGITS : COMPACT_DIGITS;
}

// `picked` is { part, face, point, place }; `coloured` is null or { variable, perFace, numbers, components } (Surfaces.values).
export function showCard(about, { part, face, point, place }, surface, coloured) {
  const { coordinateBits, valueBits } = about.scene;
  const terms = [
    ['Part', String(about.parts[part].number)],
    ['Node', surface.faces.nodes ? String(surface.faces.nodes[point]) : ''],
    ['Element', String(surface.faces.elements[face])],
    ...place.map((x, axis) => [about.parts[part].axes[axis], formatNumber(x, digits(coordinateBits))]),
  ];
  if (coloured) {
    const { variable, perFace, numbers, components } = coloured;
    const number = perFace ? face : point;
    const unit = variable.unit ? ` ${variable.unit}` : '';
    const text = (value) => formatNumber(value, digits(valueBits)) + (Number.isFinite(value) ? unit : '');
    const add = (name, value) => terms.push([name, text(value)]);
    if (components) {
      const vector = components.map((list) => list[number]);
      vector.forEach((value, axis) => add(`${variable.name} ${about.components[axis]}`, value));
      add(`${variable.name} magnitude`, Math.hypot(...vector));
    } else {
      add(variable.name, numbers[number]);
    }
  }
  find('card-title').textContent = about.parts[part].name;
  setTerms(find('card-values'), terms);
  find('card').hidden = false;
}
