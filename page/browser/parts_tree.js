// The list of parts, in their folders, with a switch each, and the opacity and colour of a part behind a button.

import { find, icon, make } from './dom.js';

const CHEVRON = 'm7 4 6 6-6 6';
const SLIDERS = 'M3 6h8m4 0h2M3 14h2m4 0h8M13 4v4M7 12v4';

export class PartsTree {
  // `looks` has { isShown, opacity, isColoured } of each part, which the tree changes; `onChange` is called afterwards.
  constructor(parts, tree, looks, onChange) {
    this.parts = parts;
    this.looks = looks;
    this.onChange = onChange;
    this.rows = [];
    this.folders = [];
    find('tree').append(...tree.map((folder) => this.makeFolder(folder)));
    this.show();
  }

  makeFolder(described) {
    const children = make('div', { className: 'children', role: 'group' });
    const below = [...described.parts];
    children.append(...described.parts.map((part) => this.makeRow(part)));
    for (const folder of described.folders) {
      const element = this.makeFolder(folder);
      below.push(...element.parts);
      children.append(element);
    }
    const box = make('input', { type: 'checkbox' });
    box.addEventListener('change', () => {
      for (const part of below) this.looks[part].isShown = box.checked;
      this.changed();
    });
    const toggle = make('button', { className: 'icon', 'aria-label': `Open or close ${described.name}`, 'aria-expanded': 'true' });
    toggle.append(icon(CHEVRON));
    const label = make('label', {}, box, make('span', { className: 'name', title: described.name }, described.name));
    const element = make('div', { className: 'folder' }, make('div', { className: 'row' }, toggle, label), children);
    toggle.addEventListener('click', () => {
      toggle.setAttribute('aria-expanded', String(!element.classList.toggle('closed')));
    });
    element.parts = below;
    this.folders.push({ box, below });
    return element;
  }

  makeRow(part) {
    const look = this.looks[part];
    const { name } = this.parts[part];
    const box = make('input', { type: 'checkbox' });
    box.addEventListener('change', () => {
      look.isShown = box.checked;
      this.changed();
    });
    const opacity = make('input', { type: 'range', min: 0, max: 100, step: 1 });
    opacity.addEventListener('input', () => {
      look.opacity = Number(opacity.value) / 100;
      this.changed();
    });
    const coloured = make('input', { type: 'checkbox' });
    coloured.addEventListener('change', () => {
      look.isColoured = coloured.checked;
      this.changed();
    });
    const settings = make(
      'div',
      { className: 'settings', hidden: true },
      make('label', {}, make('span', {}, 'Opacity'), opacity),
      make('label', {}, make('span', {}, 'In colours'), coloured),
    );
    const toggle = make('button', { className: 'icon', title: 'Opacity and colour', 'aria-label': `Opacity and colour of ${name}`, 'aria-expanded': 'false' });
    toggle.append(icon(SLIDERS));
    toggle.addEventListener('click', () => {
      settings.hidden = !settings.hidden;
      toggle.setAttribute('aria-expanded', String(!settings.hidden));
    });
    const label = make('label', {}, box, make('span', { className: 'name', title: name }, name));
    const element = make('div', { className: 'part' }, make('div', { className: 'row' }, label, toggle), settings);
    this.rows[part] = { element, box, opacity, coloured };
    return element;
  }

  changed() {
    this.show();
    this.onChange();
  }

  // Marks the parts that a step does not have.
  setAbsent(absent) {
    this.rows.forEach(({ element }, part) => element.classList.toggle('absent', absent[part]));
  }

  show() {
    this.rows.forEach((row, part) => {
      const look = this.looks[part];
      row.box.checked = look.isShown;
      row.opacity.value = Math.round(look.opacity * 100);
      row.coloured.checked = look.isColoured;
    });
    for (const { box, below } of this.folders) {
      const shown = below.filter((part) => this.looks[part].isShown).length;
      box.checked = shown === below.length;
      box.indeterminate = shown > 0 && shown < below.length;
    }
  }
}
