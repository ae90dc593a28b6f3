// The calls of the server, one after another: each answers to the list that the one before it left.

class Refused extends Error {
  constructor(status, text) {
    super(text);
    this.status = status;
  }
}

const server = {
  state: null,
  list: null,            // as the server has it, brought up to date with what it says of its changes
  onList: () => {},      // another list
  onState: () => {},
  queue: Promise.resolve(),

  async ask(name, body) {
    const request = body === undefined ? {} : { method: 'POST', body: JSON.stringify(body),
                                                headers: { 'Content-Type': 'application/json' } };
    let answer = await fetch(name, request);
    if (answer.status === 429) {
      await new Promise((done) => setTimeout(done, 500));
      answer = await fetch(name, request);
    }
    const isJson = (answer.headers.get('Content-Type') ?? '').startsWith('application/json');
    const document = isJson ? await answer.json() : { error: (await answer.text()).trim() };
    if (!answer.ok) {
      throw new Refused(answer.status, document.error);
    }
    return document;
  },

  // In turn, whatever becomes of those before.
  inTurn(work) {
    const done = this.queue.then(work, work);
    this.queue = done.catch(() => {});
    return done;
  },

  load() {
    return this.inTurn(() => this.loadNow());
  },

  async loadNow() {
    const { state, list } = await this.ask('list');
    this.list = list;
    this.take(state);
    this.onList();
  },

  take(state) {
    this.state = state;
    this.onState(state);
  },

  // A call that changes the list. What it says is made when the calls before it are done; null: nothing is to be said.
  // When another window changed the list, this one is brought up to date instead.
  change(name, bodyOf = () => ({})) {
    return this.inTurn(async () => {
      const body = bodyOf();
      if (body === null) {
        return null;
      }
      try {
        const answer = await this.ask(name, { ...body, revision: this.state.revision });
        this.bringUpToDate(answer.update);
        this.take(answer.state);
        this.onList();
        return answer;
      } catch (error) {
        if (error instanceof Refused && error.status === 412) {
          await this.loadNow();
        }
        throw error;
      }
    });
  },

  bringUpToDate(update) {
    for (const [part, { all, elements }] of Object.entries(update)) {
      if (elements) {
        elements.forEach(([place, value]) => {
          this.list[part][place] = value;
        });
      } else {
        this.list[part] = all;
      }
    }
  },

  // Whether somebody else changed the list or the file meanwhile.
  async look() {
    const state = await this.ask('state');
    if (state.revision !== this.state.revision) {
      await this.load();
    } else {
      this.take(state);
    }
  },
};
