// The data of the page as objects: services, entries of views, transponders. Names come from the file and may hold
// anything: they go into the page as text only.

const locked = 0x02;
const scrambled = 0x04;
const skipped = 0x08;
const carriesData = 0x20;
const unsetPid = 0xffff;
const unsetTag = 0xff;

const data = JSON.parse(document.getElementById('data').textContent);

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

// Case and accents make no difference to a search.
const folded = (text) => text.normalize('NFD').replace(/\p{M}/gu, '').toLowerCase();

function identity([netIndex, networkId, tsId, frequency, polarisation, serviceId]) {
  return { netIndex, networkId, tsId, frequency, polarisation: polarisation === 0 ? 'H' : 'V', serviceId };
}

// The types that the filters name; those of all others are names of the standard.
const typeNames = { 1: 'TV', 2: 'Radio' };
const typeName = (type) => typeNames[type] ?? data.service_types[type];
const nameIn = (names, place) => (place < 0 ? '' : names[place]);

const networks = data.networks.map(([netIndex, id, name]) => ({ netIndex, id, name }));

const transponders = data.transponders.map(([network, tsId, frequency, polarisation], index) => ({
  index,
  network: networks[network],
  tsId,
  frequency,
  polarisation: polarisation === 0 ? 'H' : 'V',
  services: [],
}));

function service(record) {
  const [name, shortName, place, id, type, source, flag, provider, genre, country, orderKey, pids, tags] = record;
  const [pmt, pcr, video, videoEcm, audio] = pids;
  const [videoTag, audioTag] = tags;
  const transponder = transponders[place];
  const made = {
    name,
    shortName,
    transponder,
    id: identity(id),
    type,
    source,
    flag,
    provider: nameIn(data.providers, provider),
    genre: nameIn(data.genres, genre),
    country: nameIn(data.countries, country),
    orderKey,
    pids: { pmt, pcr, video, videoEcm, audio },
    tags: { video: videoTag, audio: audioTag },
    favourites: [],
    isListed: false,
  };
  transponder.services.push(made);
  return made;
}

const services = data.services.map(service);

function viewTitle(view) {
  if (view.group !== null) {
    return view.name || `Favourites ${view.group}`;
  }
  return { radio: 'Radio', promotion: 'Promotion' }[view.kind] ?? view.kind;
}

// Texts that are found when nothing else of the row is: the numbers as they are shown and as they are written.
function searchText(row) {
  const { id } = row;
  const texts = [row.number, id.frequency, grouped.format(id.frequency), id.tsId, id.serviceId, id.networkId];
  if (row.service) {
    const { name, shortName, provider, genre, country, transponder } = row.service;
    texts.push(name, shortName, provider, genre, country, transponder.network.name);
  }
  return folded(texts.join('\n'));
}

function row(position, major, minor, found, id) {
  const number = major === null ? '' : minor === 0 ? `${major}` : `${major}-${minor}`;
  const made = { position, major, minor, number, service: found, id };
  made.text = searchText(made);
  return made;
}

function view(record) {
  const title = viewTitle(record);
  const rows = record.entries.map(([major, minor, place, id], position) => {
    const found = place < 0 ? null : services[place];
    if (found) {
      found.isListed = true;
      if (record.group !== null && !found.favourites.includes(title)) {
        found.favourites.push(title);
      }
    }
    return row(position, major, minor, found, found ? found.id : identity(id));
  });
  return { title, isFavourites: record.group !== null, rows };
}

const views = data.views.map(view).filter((each) => !each.isFavourites || each.rows.length > 0);
const order = ['ALL', 'TV', 'Radio', 'USER', 'Promotion'];
const rank = (each) => (each.isFavourites ? order.length : order.indexOf(each.title));
views.sort((a, b) => rank(a) - rank(b));

const unlisted = services.filter((each) => !each.isListed);
if (unlisted.length > 0) {
  views.push({
    title: 'In no view',
    isFavourites: false,
    rows: unlisted.map((each, position) => row(position, null, null, each, each.id)),
  });
}
