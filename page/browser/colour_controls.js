// The controls for what the colours mean: variable, component, colour map and range.

import { find, make, setOptions } from './dom.js';
import { MAGNITUDE } from './surfaces.js';
import { formatNumber } from './ticks.js';

const COMPONENTS = [MAGNITUDE, 0, 1, 2];

export class ColourControls {
  // `colours` is { variable, component, map, range }, which the controls change: numbers (variable null: none) and two
  // ends. `fittedRange` gives the range of what is shown, `onChange` is called after a change.
  constructor(scene, colours, fittedRange, onChange) {
    this.scene = scene;
    this.colours = colours;
    this.fittedRange = fittedRange;
    this.onChange = onChange;
    this.maps = scene.maps.map(({ colours: text }) => text.match(/../g).map((digits) => parseInt(digits, 16)));
    setOptions(find('variable'), [
      ['', 'None'],
      ...scene.variables.map((variable, i) => [i, variable.label && variable.label !== variable.name ? `${variable.name} \u2013 ${variable.label}` : variable.name]),
    ]);
    setOptions(find('map'), scene.maps.map(({ name }, i) => [i, name]));
    find('components').append(
      ...COMPONENTS.map((component) => {
        const button = make('button', { textContent: component === MAGNITUDE ? 'Magnitude' : scene.components[component], role: 'radio' });
        button.addEventListener('click', () => this.change({ component, range: null }));
        return button;
      }),
    );
    find('variable').addEventListener('change', (event) => {
      const { value } = event.target;
      this.change({ variable: value === '' ? null : Number(value), component: MAGNITUDE, range: null });
    });
    find('map').addEventListener('change', (event) => this.change({ map: Number(event.target.value) }));
    find('auto').addEventListener('click', () => this.change({ range: null }));
    for (const end of ['low', 'high']) find(end).addEventListener('change', () => this.takeRange());
    if (scene.variables.length === 0) find('variable').disabled = true;
    this.change({}, false);
  }

  // A range of null becomes the fitted one.
  change(changes, tells = true) {
    Object.assign(this.colours, changes);
    const { colours } = this;
    if (colours.variable !== null && !colours.range) colours.range = this.fittedRange(colours) ?? [0, 1];
    this.show();
    if (tells) this.onChange();
  }

  takeRange() {
    const [low, high] = ['low', 'high'].map((end) => Number(find(end).value.replace(',', '.').replace('\u2212', '-')));
    const isRange = find('low').value !== '' && find('high').value !== '' && low < high && Number.isFinite(high - low);
    for (const end of ['low', 'high']) find(end).setAttribute('aria-invalid', String(!isRange));
    if (isRange) this.change({ range: [low, high] });
  }

  // Red, green and blue of 256 colours.
  get map() {
    return this.maps[this.colours.map];
  }

  // "Velocity magnitude [m/s]"
  get title() {
    const variable = this.scene.variables[this.colours.variable];
    const label = variable.label || variable.name;
    if (!variable.vector) return label;
    const { component } = this.colours;
    const suffix = component === MAGNITUDE ? 'magnitude' : this.scene.components[component];
    const unit = variable.unit ? ` [${variable.unit}]` : '';
    const bare = unit && label.endsWith(unit) ? label.slice(0, -unit.length) : label;
    return `${bare} ${suffix}${bare === label ? '' : unit}`;
  }

  show() {
    const { variable, component, map, range } = this.colours;
    const isVector = variable !== null && this.scene.variables[variable].vector;
    find('variable').value = variable === null ? '' : variable;
    find('map').value = map;
    find('components').hidden = !isVector;
    [...find('components').children].forEach((button, i) => {
      button.setAttribute('aria-checked', String(COMPONENTS[i] === component));
    });
    find('scale').hidden = variable === null;
    if (range) {
      find('low').value = formatNumber(range[0]);
      find('high').value = formatNumber(range[1]);
      for (const end of ['low', 'high']) find(end).setAttribute('aria-invalid', 'false');
    }
    const canvas = find('gradient');
    canvas.width = 256;
    const context = canvas.getContext('2d');
    for (let i = 0; i < 256; ++i) {
      context.fillStyle = `rgb(${this.map[3 * i]}, ${this.map[3 * i + 1]}, ${this.map[3 * i + 2]})`;
      context.fillRect(i, 0, 1, 8);
    }
  }
}
