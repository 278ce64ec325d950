// Helps to make elements. Texts become text nodes, so names out of a file are never markup.

// An element with properties, and children that are elements or texts.
export function make(tag, properties = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (name.includes('-') || name === 'role') element.setAttribute(name, value);
    else element[name] = value;
  }
  element.append(...children);
  return element;
}

export function find(id) {
  return document.getElementById(id);
}

// An icon of a 20 x 20 grid out of the data of a path.
export function icon(path) {
  const namespace = 'http://www.w3.org/2000/svg';
  const svg = document.createElementNS(namespace, 'svg');
  svg.setAttribute('viewBox', '0 0 20 20');
  const line = document.createElementNS(namespace, 'path');
  line.setAttribute('d', path);
  svg.append(line);
  return svg;
}

// The options of a select element, as pairs of a value and a text.
export function setOptions(select, options) {
  select.replaceChildren(...options.map(([value, text]) => make('option', { value, textContent: text })));
}

// Terms and descriptions; those without a description are left out.
export function setTerms(list, terms) {
  list.replaceChildren(
    ...terms.filter(([, text]) => text).flatMap(([term, text]) => [make('dt', {}, term), make('dd', {}, text)]),
  );
}
