// What the list holds of one service, by topics; what nobody set is left out.

const given = (fields) => fields.filter(([, value]) => value !== '' && value !== null && value !== undefined);
const setPid = (pid) => (pid === unsetPid ? '' : `${pid}`);
const setTag = (tag) => (tag === unsetTag ? '' : `${tag}`);

function topicsOf({ number, id, service: of }) {
  const identityFields = [
    [aboutOf('net_index'), id.netIndex],
    [aboutOf('network_id'), id.networkId],
    [aboutOf('ts_id'), id.tsId],
    [titleOf('frequency'), `${grouped.format(id.frequency)} kHz ${id.polarisation}`],
    [aboutOf('service_id'), id.serviceId],
  ];
  if (!of) {
    return [['Entry', given([[titleOf('number'), number], ['Service', 'the list holds none that this entry names']])],
            ['Identity', identityFields]];
  }
  const flags = [[scrambled, 'scrambled'], [locked, 'locked'], [skipped, 'skipped'], [carriesData, 'data service']];
  return [
    ['Service', given([
      [titleOf('short_name'), of.shortName === of.name ? '' : of.shortName],
      [titleOf('type'), of.typeName],
      [titleOf('provider'), of.provider],
      [titleOf('genre'), of.genre],
      [titleOf('country'), of.country],
      ['Marks', flags.filter(([bit]) => of.flag & bit).map(([, word]) => word).join(', ')],
    ])],
    ['Shown as', of.shownIn.map(([title, shownNumber]) => [title, shownNumber || 'no number'])],
    ['Identity', [[titleOf('network_name'), of.transponder.network.name], ...identityFields].filter(([, value]) => value !== '')],
    ['Streams', given([
      [titleOf('pmt_pid'), setPid(of.pids.pmt)],
      [titleOf('pcr_pid'), setPid(of.pids.pcr)],
      [titleOf('video_pid'), setPid(of.pids.video)],
      [titleOf('video_ecm_pid'), setPid(of.pids.videoEcm)],
      [titleOf('audio_pid'), setPid(of.pids.audio)],
      [titleOf('video_tag'), setTag(of.tags.video)],
      [titleOf('audio_tag'), setTag(of.tags.audio)],
      [titleOf('source_type'), of.source],
      [titleOf('order_key'), of.orderKey || ''],
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
