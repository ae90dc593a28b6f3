// The transponders of every source, one small plan below the other on one axis: a lane for each polarisation, a mark for
// each transponder, as high as its services are many, on one scale for all.

const laneHeight = 34;
const axisHeight = 24;
const margin = { left: 26, right: 30, top: 4 };
const labelRoom = 24;  // half of the longest number below the axis
const narrowest = 560;
const wideGap = 1_000_000;  // kHz without a transponder that the axis leaves out
const breakWidth = 28;
const namedInTip = 12;
const reach = 14;  // pixels from a mark at which the pointer still means it

// H, V, and those that have numbers.
function lanesOf(members) {
  const rank = (lane) => ({ H: -2, V: -1 })[lane] ?? Number(lane);
  return [...new Set(members.map((each) => each.polarisation))].sort((a, b) => rank(a) - rank(b));
}

const plans = [...groupBy(transponders, (each) => each.network.netIndex)].map(([netIndex, members]) => ({
  netIndex,
  title: [...new Set(members.map((each) => each.network.name).filter(Boolean))],
  members: members.toSorted((a, b) => a.polarisation.localeCompare(b.polarisation) || a.frequency - b.frequency),
  lanes: lanesOf(members),
}));

const tip = {
  box: find('tip'),

  show(transponder, mark) {
    const { frequency, polarisation, tsId, network } = transponder;
    const more = transponder.services.length - namedInTip;
    const names = transponder.services.slice(0, namedInTip);
    this.box.replaceChildren(
      make('strong', {}, `${grouped.format(frequency)} kHz ${polarisation}`),
      make('p', {}, `Transport stream ${tsId}, `, make('bdi', {}, network.name || `network ${network.id}`)),
      make('p', {}, counted(transponder.services.length, 'service')),
      make('ul', {}, ...names.map(({ name, flag }) =>
        make('li', { dir: 'auto', class: flag & scrambled ? 'key' : null }, name || 'without a name')),
        ...(more > 0 ? [make('li', { class: 'more' }, `and ${grouped.format(more)} more`)] : [])),
    );
    this.box.hidden = false;
    this.place(mark.getBoundingClientRect());
  },

  // Above the mark when there is room, below it otherwise; never out of the window.
  place(of) {
    const { width, height } = this.box.getBoundingClientRect();
    const left = Math.min(Math.max(of.left + of.width / 2 - width / 2, 8), innerWidth - width - 8);
    const above = of.top - height - 8;
    this.box.style.left = `${Math.max(left, 8)}px`;
    this.box.style.top = `${above >= 8 ? above : Math.min(of.bottom + 8, Math.max(innerHeight - height - 8, 8))}px`;
  },

  hide() {
    this.box.hidden = true;
  },
};

// Whole steps of 1, 2 or 5 times a power of ten, about as many as there is room for.
function ticks(low, high, wanted) {
  const rough = Math.max((high - low) / wanted, 1);
  const power = 10 ** Math.floor(Math.log10(rough));
  const step = [1, 2, 5, 10].map((each) => each * power).find((each) => each >= rough);
  const made = [];
  for (let at = Math.ceil(low / step) * step; at <= high; at += step) {
    made.push(at);
  }
  return made;
}

// Stretches of frequencies between which there is nothing for long.
function bandsOf(frequencies) {
  const bands = [];
  for (const each of frequencies.toSorted((a, b) => a - b)) {
    const last = bands.at(-1);
    if (last && each - last.high <= wideGap) {
      last.high = each;
    } else {
      bands.push({ low: each, high: each });
    }
  }
  const edge = Math.max(bands.reduce((sum, { low, high }) => sum + high - low, 0) * 0.02, 5000);
  return bands.map(({ low, high }) => ({ low: Math.max(low - edge, 0), high: high + edge }));
}

const bands = bandsOf(transponders.map((each) => each.frequency));
const mostServices = Math.max(largest(transponders.map((each) => each.services.length)), 1);

// The one scale of all plans: as many pixels a kHz in every band.
function scaleOf(width) {
  const span = bands.reduce((sum, { low, high }) => sum + high - low, 0);
  const perKHz = (width - margin.left - margin.right - (bands.length - 1) * breakWidth) / span;
  let begin = margin.left;
  const placed = bands.map((band) => {
    const from = begin;
    begin += (band.high - band.low) * perKHz + breakWidth;
    return { ...band, from, to: begin - breakWidth };
  });
  const bandOf = (frequency) => placed.find(({ high }) => frequency <= high) ?? placed.at(-1);
  const x = (frequency) => {
    const { from, low } = bandOf(frequency);
    return from + (frequency - low) * perKHz;
  };
  return { placed, perKHz, x };
}

function axisTicks({ placed, perKHz, x }) {
  const step = 90 / perKHz;
  return placed.flatMap(({ low, high, from, to }) => ticks(low, high, Math.max((high - low) / step, 1)).map((at) => {
    const place = Math.round(x(at)) + 0.5;
    const hasRoom = place > from + labelRoom / 2 && place < to - labelRoom / 2;
    return { place, text: hasRoom ? grouped.format(at / 1000) : '' };
  }));
}

// As wide as the marks of a lane allow without hiding each other.
function markWidth(plan, scale) {
  const gaps = [];
  plan.members.forEach((each, i) => {
    const next = plan.members[i + 1];
    if (next && next.polarisation === each.polarisation && next.frequency > each.frequency) {
      gaps.push(scale.x(next.frequency) - scale.x(each.frequency));
    }
  });
  gaps.sort((a, b) => a - b);
  return Math.min(Math.max((gaps[Math.floor(gaps.length / 10)] ?? Infinity) * 0.7, 3), 12);
}

class Plan {
  constructor(plan, onChoose) {
    Object.assign(this, plan);
    this.onChoose = onChoose;
    this.current = 0;
    this.box = make('div', {});
    const name = this.title.length > 0 ? this.title.slice(0, 3).join(', ') : 'Unnamed network';
    const others = this.title.length > 3 ? ` and ${this.title.length - 3} more` : '';
    const count = this.members.reduce((sum, each) => sum + each.services.length, 0);
    this.element = make('figure', { class: 'plan' },
      make('figcaption', {}, make('bdi', { class: 'plan-name' }, name), others,
        make('span', { class: 'hint' }, ` ${counted(this.members.length, 'transponder')}, ${counted(count, 'service')}`
                                        + `, network index ${this.netIndex}`)),
      this.box);
  }

  draw(width) {
    this.width = width;
    this.scale = scaleOf(width);
    const height = margin.top + this.lanes.length * laneHeight;
    this.svg = draw('svg', { width, height, role: 'group', 'aria-label': 'Transponders by frequency',
                             pointermove: (event) => this.onPointer(event), pointerleave: () => this.leave(),
                             click: (event) => this.onClick(event), keydown: (event) => this.onKey(event) });
    const lines = axisTicks(this.scale).map(({ place }) =>
      draw('line', { class: 'tick', x1: place, x2: place, y1: margin.top, y2: height }));
    this.svg.append(...lines, ...this.lanes.flatMap((lane) => this.laneLines(lane)));
    this.thickness = markWidth(this, this.scale);
    this.marks = this.members.map((each, i) => this.mark(each, i));
    appendAll(this.svg, this.marks);
    this.box.replaceChildren(this.svg);
    this.choose(filters.transponder);
  }

  base(lane) {
    return margin.top + (this.lanes.indexOf(lane) + 1) * laneHeight - 0.5;
  }

  laneLines(lane) {
    const base = this.base(lane);
    const count = this.members.filter((each) => each.polarisation === lane)
      .reduce((sum, each) => sum + each.services.length, 0);
    return [
      ...this.scale.placed.map(({ from, to }) => draw('line', { class: 'base', x1: from, x2: to, y1: base, y2: base })),
      draw('text', { class: 'lane', x: 6, y: base - 4 }, lane),
      draw('text', { class: 'count', x: this.width - 2, y: base - 4, 'text-anchor': 'end' }, grouped.format(count)),
    ];
  }

  mark(of, index) {
    const count = of.services.length;
    const height = count === 0 ? 3 : 4 + (laneHeight - 10) * (count / mostServices);
    const word = { H: 'horizontal', V: 'vertical' }[of.polarisation] ?? `polarisation ${of.polarisation}`;
    return draw('rect', {
      class: `mark lane-${of.polarisation}${count === 0 ? ' empty' : ''}`,
      x: this.scale.x(of.frequency) - this.thickness / 2,
      y: this.base(of.polarisation) - height,
      width: this.thickness,
      height,
      rx: Math.min(this.thickness / 2, 2.5),
      role: 'button',
      tabindex: index === this.current ? 0 : -1,
      'aria-pressed': 'false',
      'aria-describedby': 'tip',
      'aria-label': `${grouped.format(of.frequency)} kilohertz ${word}, transport stream ${of.tsId}, ` +
        counted(count, 'service'),
      focus: () => tip.show(of, this.marks[index]),
      blur: () => tip.hide(),
    });
  }

  // The mark that the pointer means: the nearest one of its lane.
  indexAt(event) {
    const box = this.svg.getBoundingClientRect();
    const [x, y] = [event.clientX - box.left, event.clientY - box.top - margin.top];
    const lane = this.lanes[Math.floor(y / laneHeight)];
    const distance = (i) => Math.abs(this.scale.x(this.members[i].frequency) - x);
    let nearest = -1;
    this.members.forEach(({ polarisation }, i) => {
      if (polarisation === lane && distance(i) <= reach && (nearest < 0 || distance(i) < distance(nearest))) {
        nearest = i;
      }
    });
    return nearest;
  }

  onPointer(event) {
    const index = this.indexAt(event);
    this.hover(index);
    if (index >= 0) {
      tip.show(this.members[index], this.marks[index]);
    } else {
      tip.hide();
    }
  }

  leave() {
    this.hover(-1);
    tip.hide();
  }

  hover(index) {
    this.svg.classList.toggle('on-mark', index >= 0);
    this.marks.forEach((mark, i) => mark.classList.toggle('hovered', i === index));
  }

  onClick(event) {
    const index = this.indexAt(event);
    if (index >= 0) {
      this.onChoose(this.members[index]);
    }
  }

  onKey(event) {
    const steps = { ArrowRight: 1, ArrowLeft: -1, Home: -Infinity, End: Infinity };
    if (event.key === 'Escape') {
      tip.hide();
    } else if (event.key === 'Enter' || event.key === ' ') {
      event.preventDefault();
      this.onChoose(this.members[this.current]);
    } else if (event.key in steps) {
      event.preventDefault();
      this.goTo(Math.min(Math.max(this.current + steps[event.key], 0), this.members.length - 1));
    }
  }

  goTo(index) {
    this.marks[this.current].setAttribute('tabindex', -1);
    this.current = index;
    this.marks[index].setAttribute('tabindex', 0);
    this.marks[index].focus();
  }

  choose(transponder) {
    if (!this.svg) {
      return;
    }
    this.svg.classList.toggle('has-choice', this.members.includes(transponder));
    this.marks.forEach((mark, i) => mark.setAttribute('aria-pressed', this.members[i] === transponder));
  }
}

function axis(width) {
  const scale = scaleOf(width);
  const texts = axisTicks(scale).filter(({ text }) => text)
    .map(({ place, text }) => draw('text', { x: place, y: 15, 'text-anchor': 'middle' }, text));
  return draw('svg', { width, height: axisHeight, 'aria-hidden': 'true' }, ...texts,
              draw('text', { class: 'unit', x: width - 2, y: 15, 'text-anchor': 'end' }, 'MHz'));
}

function drawPlans(shown) {
  const width = Math.max(find('plans').clientWidth, narrowest);
  if (find('plans').clientWidth > 0 && width !== shown[0]?.width) {
    shown.forEach((each) => each.draw(width));
    find('axis').replaceChildren(axis(width));
  }
}

function showPlans(onChoose) {
  const shown = plans.map((each) => new Plan(each, onChoose));
  find('plan-count').textContent = shown.length === 0 ? 'The list holds none.'
    : `${grouped.format(transponders.length)} on ${counted(shown.length, 'source')}, at most `
      + `${counted(mostServices, 'service')} each`;
  if (shown.length === 0) {
    return shown;
  }
  appendAll(find('plans'), shown.map((each) => each.element));
  find('plans').append(make('div', { id: 'axis' }));
  drawPlans(shown);
  find('plan').addEventListener('toggle', () => drawPlans(shown));
  find('plans').addEventListener('scroll', () => tip.hide());
  addEventListener('resize', () => drawPlans(shown));
  addEventListener('scroll', () => tip.hide(), { passive: true });
  return shown;
}
