// Everything that the list holds of one service.

const set = (value, unset) => (value === unset ? 'not set' : `${value}`);

function fieldsOf({ number, id, service: of }) {
  const fields = [
    ['Number', number || 'none'],
    ['Network index', id.netIndex],
    ['Original network id', id.networkId],
    ['Transport stream id', id.tsId],
    ['Frequency', `${grouped.format(id.frequency)} kHz ${id.polarisation}`],
    ['Service id', id.serviceId],
  ];
  if (!of) {
    return [...fields, ['Service', 'the list holds none that this entry names']];
  }
  const { pids, tags } = of;
  const yes = (bit) => (of.flag & bit ? 'yes' : 'no');
  return [
    ...fields,
    ['Short name', of.shortName || 'none'],
    ['Type', of.typeName],
    ['Source type', of.source],
    ['Network', of.transponder.network.name || 'none'],
    ['Provider', of.provider || 'none'],
    ['Genre', of.genre || 'none'],
    ['Country', of.country || 'none'],
    ['Favourite groups', of.favourites.join(', ') || 'none'],
    ['Scrambled', yes(scrambled)],
    ['Locked', yes(locked)],
    ['Skipped', yes(skipped)],
    ['Data service', yes(carriesData)],
    ['PMT PID', set(pids.pmt, unsetPid)],
    ['PCR PID', set(pids.pcr, unsetPid)],
    ['Video PID', set(pids.video, unsetPid)],
    ['Video ECM PID', set(pids.videoEcm, unsetPid)],
    ['Audio PID', set(pids.audio, unsetPid)],
    ['Video tag', set(tags.video, unsetTag)],
    ['Audio tag', set(tags.audio, unsetTag)],
    ['Order key', of.orderKey],
  ];
}

const details = {
  box: find('details'),

  start() {
    find('details-close').addEventListener('click', () => this.box.close());
    this.box.addEventListener('click', (event) => {
      if (event.target === this.box) {
        this.box.close();
      }
    });
  },

  show(of) {
    find('details-name').textContent = of.service ? of.service.name || 'A service without a name' : 'No service';
    find('details-fields').replaceChildren(
      ...fieldsOf(of).map(([name, value]) =>
        make('div', {}, make('dt', {}, name), make('dd', { dir: 'auto' }, `${value}`))),
    );
    this.box.showModal();
  },
};
