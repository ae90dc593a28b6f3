// Elements of the page and small things of values, for the scripts of every page. Names come from files and may hold
// anything: they go into the page as text only.

const find = (id) => document.getElementById(id);
const grouped = new Intl.NumberFormat('en');

// An element with attributes, or listeners where a value is a function, and children: elements, or text.
function fill(element, attributes, children) {
  for (const [name, value] of Object.entries(attributes)) {
    if (typeof value === 'function') {
      element.addEventListener(name, value);
    } else if (value !== null && value !== false) {
      element.setAttribute(name, value === true ? '' : value);
    }
  }
  appendAll(element, children);
  return element;
}

const make = (tag, attributes = {}, ...children) => fill(document.createElement(tag), attributes, children);
const draw = (tag, attributes = {}, ...children) =>
  fill(document.createElementNS('http://www.w3.org/2000/svg', tag), attributes, children);

// Files may hold more than a call takes arguments.
function appendAll(element, children) {
  for (const child of children) {
    element.append(child);
  }
}

const largest = (values) => values.reduce((most, value) => Math.max(most, value), -Infinity);
const least = (values) => -largest(values.map((value) => -value));

function counted(count, what) {
  const many = what.endsWith('y') ? `${what.slice(0, -1)}ies` : `${what}s`;
  return `${grouped.format(count)} ${count === 1 ? what : many}`;
}

// A map from keys to the values that have them, in order of appearance.
function groupBy(values, keyOf) {
  const groups = new Map();
  for (const value of values) {
    const key = keyOf(value);
    if (!groups.has(key)) {
      groups.set(key, []);
    }
    groups.get(key).push(value);
  }
  return groups;
}

const collator = new Intl.Collator('en', { numeric: true, sensitivity: 'base' });

// Case and accents make no difference to a search.
const folded = (text) => text.normalize('NFD').replace(/\p{M}/gu, '').toLowerCase();
const wordsOf = (text) => folded(text).split(/\s+/).filter(Boolean);
