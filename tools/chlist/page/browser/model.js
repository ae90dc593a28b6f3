// The data of a list as objects: services, entries of views, transponders.

const locked = 0x02;
const scrambled = 0x04;
const skipped = 0x08;
const carriesData = 0x20;
const unsetPid = 0xffff;
const unsetTag = 0xff;

// The types that the filters name; those of all others are names of the standard.
const typeNames = { 1: 'TV', 2: 'Radio' };

const polarisationText = (polarisation) => ['H', 'V'][polarisation] ?? `${polarisation}`;

// text: as edits name a service, with a V in front of the number of a polarisation that has no letter.
function identity([netIndex, networkId, tsId, frequency, code, serviceId]) {
  const polarisation = polarisationText(code);
  const text = `${netIndex}:${networkId}:${tsId}:${frequency}${code > 1 ? 'V' : ''}${polarisation}:${serviceId}`;
  return { netIndex, networkId, tsId, frequency, polarisation, serviceId, text };
}

const nameIn = (names, place) => (place < 0 ? '' : names[place]);

function viewTitle(view) {
  if (view.group !== null) {
    return view.name || `Favourites ${view.group}`;
  }
  return { radio: 'Radio', promotion: 'Promotion' }[view.kind] ?? view.kind;
}

class Service {
  constructor(record, index, transponder, { providers, genres, countries, service_types }) {
    const [name, shortName, , id, type, source, flag, provider, genre, country, orderKey, pids, tags] = record;
    const [pmt, pcr, video, videoEcm, audio] = pids;
    const [videoTag, audioTag] = tags;
    Object.assign(this, {
      index,
      name,
      shortName,
      transponder,
      id: identity(id),
      type,
      typeName: typeNames[type] ?? service_types[type],
      source,
      flag,
      provider: nameIn(providers, provider),
      genre: nameIn(genres, genre),
      country: nameIn(countries, country),
      orderKey,
      pids: { pmt, pcr, video, videoEcm, audio },
      tags: { video: videoTag, audio: audioTag },
      favourites: [],
      shownIn: [],  // titles of views, and its numbers there
      isListed: false,
    });
  }

  // What is searched; made when somebody searches.
  get text() {
    const { name, shortName, provider, genre, country, transponder, id } = this;
    this.foldedText ??= folded([name, shortName, provider, genre, country, transponder.network.name,
                                idText(id)].join('\n'));
    return this.foldedText;
  }
}

// Numbers are found as they are shown and as they are written.
const idText = (id) => [id.frequency, grouped.format(id.frequency), id.tsId, id.serviceId, id.networkId].join('\n');

class Row {
  constructor(position, [major, minor], found, id) {
    const number = major === null ? '' : minor === 0 ? `${major}` : `${major}-${minor}`;
    Object.assign(this, { position, major, minor, number, service: found, id });
  }

  get text() {
    return `${this.number}\n${this.service?.text ?? idText(this.id)}`;
  }
}

function viewOf(record, services) {
  const title = viewTitle(record);
  const isFavourites = record.group !== null;
  const rows = record.entries.map(([major, minor, place, id], position) => {
    const found = place < 0 ? null : services[place];
    if (found) {
      found.isListed = true;
      if (isFavourites && !found.favourites.includes(title)) {
        found.favourites.push(title);
      }
    }
    const row = new Row(position, [major, minor], found, found ? found.id : identity(id));
    found?.shownIn.push([title, row.number]);
    return row;
  });
  return { kind: record.kind, title, isFavourites, group: record.group, rows };
}

const viewOrder = ['ALL', 'TV', 'Radio', 'USER', 'Promotion'];

// A list of `page_data`.
function modelOf(data) {
  const networks = data.networks.map(([netIndex, id, name]) => ({ netIndex, id, name }));
  const transponders = data.transponders.map(([network, tsId, frequency, polarisation], index) => ({
    index,
    network: networks[network],
    tsId,
    frequency,
    polarisation: polarisationText(polarisation),
    services: [],
  }));
  const services = data.services.map((record, index) => new Service(record, index, transponders[record[2]], data));
  services.forEach((each) => each.transponder.services.push(each));
  const rank = (view) => (view.isFavourites ? viewOrder.length : viewOrder.indexOf(view.title));
  const views = data.views.map((record, place) => ({ ...viewOf(record, services), place })).sort((a, b) => rank(a) - rank(b));
  return { networks, transponders, services, views };
}
