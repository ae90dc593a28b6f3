// What the list holds of one service, by topics; what nobody set is left out.

const given = (fields) => fields.filter(([, value]) => value !== '' && value !== null && value !== undefined);
const setPid = (pid) => (pid === unsetPid ? '' : `${pid}`);
const setTag = (tag) => (tag === unsetTag ? '' : `${tag}`);

function topicsOf({ number, id, service: of }) {
  const identityFields = [
    ['Network index', id.netIndex],
    ['Original network id', id.networkId],
    ['Transport stream id', id.tsId],
    ['Frequency', `${grouped.format(id.frequency)} kHz ${id.polarisation}`],
    ['Service id', id.serviceId],
  ];
  if (!of) {
    return [['Entry', given([['Number', number], ['Service', 'the list holds none that this entry names']])],
            ['Identity', identityFields]];
  }
  const flags = [[scrambled, 'scrambled'], [locked, 'locked'], [skipped, 'skipped'], [carriesData, 'data service']];
  return [
    ['Service', given([
      ['Short name', of.shortName === of.name ? '' : of.shortName],
      ['Type', of.typeName],
      ['Provider', of.provider],
      ['Genre', of.genre],
      ['Country', of.country],
      ['Marks', flags.filter(([bit]) => of.flag & bit).map(([, word]) => word).join(', ')],
    ])],
    ['Shown as', of.shownIn.map(([title, shownNumber]) => [title, shownNumber || 'no number'])],
    ['Identity', [['Network', of.transponder.network.name], ...identityFields].filter(([, value]) => value !== '')],
    ['Streams', given([
      ['PMT PID', setPid(of.pids.pmt)],
      ['PCR PID', setPid(of.pids.pcr)],
      ['Video PID', setPid(of.pids.video)],
      ['Video ECM PID', setPid(of.pids.videoEcm)],
      ['Audio PID', setPid(of.pids.audio)],
      ['Video tag', setTag(of.tags.video)],
      ['Audio tag', setTag(of.tags.audio)],
      ['Source type', of.source],
      ['Order key', of.orderKey || ''],
    ])],
  ].filter(([, fields]) => fields.length > 0);
}

const details = {
  box: find('details'),

  start(onClose) {
    find('details-close').addEventListener('click', () => this.box.close());
    find('copy-identity').addEventListener('click', () => copyText(find('details-identity').textContent));
    this.box.addEventListener('close', onClose);
    this.box.addEventListener('click', (event) => {
      if (event.target === this.box) {
        this.box.close();
      }
    });
  },

  show(of) {
    find('details-name').textContent = of.service ? of.service.name || 'A service without a name' : 'No service';
    find('details-identity').textContent = of.id.text;
    find('details-topics').replaceChildren(...topicsOf(of).map(([title, fields]) => make('section', {},
      make('h3', {}, title), make('dl', {}, ...fields.map(([name, value]) =>
        make('div', {}, make('dt', { dir: 'auto' }, name), make('dd', { dir: 'auto' }, `${value}`)))))));
    if (!this.box.open) {
      this.box.showModal();
    }
  },
};
