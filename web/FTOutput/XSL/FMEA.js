// Failure modes and effects: what each event of each component leads to.
'use strict';

(function () {
  const make = VelTarn.make;
  const Portion = 150;  // Rows made at a time while the reader scrolls on.

  const TypeTexts = {BasicEvent: '', NormalEvent: 'Normal event', CCF: 'Common cause failure',
    ComplementEvent: 'Does not happen', Circle: 'Cut loop'};

  /// The worst severity among the effects; NaN when none has one.
  function worstSeverity(event) {
    const severities = event.effects.map((effect) => VelTarn.findTree(effect.id))
        .map((tree) => (tree ? tree.severity.value : NaN)).filter((value) => !Number.isNaN(value));
    return severities.length === 0 ? NaN : Math.max(...severities);
  }

  function rowsOf(fmea) {
    return fmea.components.flatMap((component) => component.events.map((event) => {
      const direct = event.effects.filter((effect) => effect.direct);
      const further = event.effects.filter((effect) => !effect.direct);
      return {event, component, direct, further, severity: worstSeverity(event),
        eventText: event.name + ' ' + event.description + ' ' + (TypeTexts[event.type] || ''),
        effectText: event.effects.map((effect) => effect.name).join(' ')};
    }));
  }

  const Columns = [
    {key: 'component', title: 'Component', value: (row) => row.component.name},
    {key: 'event', title: 'Failure event', value: (row) => row.event.shortName},
    {key: 'unavailability', title: 'Unavailability', numeric: true,
      value: (row) => row.event.unavailability.value},
    {key: 'frequency', title: 'Frequency', numeric: true, value: (row) => row.event.frequency.value},
    {key: 'direct', title: 'Direct effects', value: (row) => row.direct.length},
    {key: 'further', title: 'Further effects', value: (row) => row.further.length},
    {key: 'severity', title: 'Severity', numeric: true, value: (row) => row.severity},
  ];

  function componentCell(row) {
    const component = row.component;
    return make('td', {'role': 'cell', 'data-label': 'Component'}, make('a', {
      href: VelTarn.address(['fmea'], {component: component.name})}, ...VelTarn.breakable(component.name)),
    component.sid ? make('span', {class: 'description'}, component.sid) : null);
  }

  function eventCell(row) {
    const {event, direct} = row;
    const type = event.type in TypeTexts ? TypeTexts[event.type] : event.type;
    return make('th', {'scope': 'row', 'role': 'rowheader', 'class': 'name', 'data-label': 'Failure event'},
        make('a', {href: VelTarn.address(['fmea'], {event: event.id})}, ...VelTarn.breakable(event.shortName)),
        ' ', type ? make('span', {class: 'tag'}, type) : null,
        direct.length > 0 ? make('span', {class: 'tag single'}, 'Single point failure') : null,
        event.description ? make('span', {class: 'description'}, event.description) : null);
  }

  function effectsCell(label, effects, event) {
    if (effects.length === 0) return make('td', {'role': 'cell', 'data-label': label, 'class': 'none'}, '\u2013');
    return make('td', {'role': 'cell', 'data-label': label}, make('ul', {class: 'plain'},
        ...effects.map((effect) => make('li', {}, VelTarn.treeLink(effect.id, effect.name), ' ',
            VelTarn.findTree(effect.id) ? make('a', {'class': 'minor', 'href': VelTarn.address(
                ['tree', effect.id, 'cutsets'], {event: event.id}),
            'aria-label': 'Cut sets of ' + effect.name + ' with ' + event.name}, 'cut sets') : ''))));
  }

  const figureCell = (label, text) => make('td', {'role': 'cell', 'class': 'figure',
    'data-label': label}, text || '\u2013');

  const severityText = (row) => (Number.isNaN(row.severity) ? '' : String(row.severity));

  const makeRow = (row) => make('tr', {role: 'row', class: row.direct.length > 0 ? 'single' : null},
      componentCell(row), eventCell(row),
      figureCell('Unavailability', row.event.unavailability.text),
      figureCell('Frequency', row.event.frequency.text),
      effectsCell('Direct effects', row.direct, row.event),
      effectsCell('Further effects', row.further, row.event),
      figureCell('Severity', severityText(row)));

  const effectNames = (effects) => effects.map((effect) => effect.name).join('; ');

  const exportRows = (rows) => [
    [...Columns.map((column) => column.title), 'Single point failure', 'Description'],
    ...rows.map((row) => [row.component.name, row.event.shortName, row.event.unavailability.text,
      row.event.frequency.text, effectNames(row.direct), effectNames(row.further), severityText(row),
      row.direct.length > 0 ? 'yes' : 'no', row.event.description])];

  const Filters = [
    {key: 'in', label: 'Component', text: (row) => row.component.name},
    {key: 'failure', label: 'Failure event', text: (row) => row.eventText},
    {key: 'effect', label: 'Effect', text: (row) => row.effectText},
  ];

  function filterRows(rows, choices) {
    const tests = Filters.map((filter) => ({filter, matches: VelTarn.matcher(choices[filter.key] || '')}));
    return rows.filter((row) => tests.every(({filter, matches}) => matches(filter.text(row))) &&
        (!choices.single || row.direct.length > 0));
  }

  /// Rows in portions: the first at once, the next when the reader nears their end, all for paper.
  class GrowingRows {
    constructor(body, end) {
      this.body = body;
      this.rows = [];
      this.made = 0;
      const observer = new IntersectionObserver((entries) => {
        if (this.made === this.rows.length || !entries.some((entry) => entry.isIntersecting)) return;
        this.grow(Portion);
        // Only a new look tells an end that is still near, as when the page is scrolled on at once.
        observer.unobserve(end);
        observer.observe(end);
      }, {rootMargin: '600px'});
      const all = () => this.grow(Infinity);
      observer.observe(end);
      window.addEventListener('beforeprint', all);
      VelTarn.whenLeft(() => {
        observer.disconnect();
        window.removeEventListener('beforeprint', all);
      });
    }

    show(rows) {
      this.rows = rows;
      this.made = 0;
      this.body.replaceChildren();
      this.grow(Portion);
    }

    grow(count) {
      const next = this.rows.slice(this.made, this.made + Math.max(0, count));
      this.body.append(...next.map(makeRow));
      this.made += next.length;
    }
  }

  function toolbar(choices, state, fill) {
    const change = (key, value) => {
      choices[key] = value;
      VelTarn.keepChoices({[key]: value});
      fill();
    };
    const single = make('input', {'type': 'checkbox', 'data-focus': 'single', 'change': () =>
      change('single', single.checked ? 'true' : '')});
    single.checked = Boolean(choices.single);
    const name = VelTarn.fileName(VelTarn.results('FaultTrees').model, 'failure-modes');
    return make('div', {class: 'toolbar'},
        ...Filters.map((filter) => VelTarn.filterField(filter.label, choices[filter.key],
            'filter-' + filter.key, (value) => change(filter.key, value))),
        make('label', {class: 'check'}, single, 'Single point failures only'),
        VelTarn.button('Save as CSV', () => VelTarn.saveCsv(name, exportRows(state.shown)), 'csv'),
        VelTarn.button('Print', () => window.print(), 'print'));
  }

  /// The rows that a link asked for: one event, or one component.
  function linkedRows(rows, choices) {
    if (choices.event) return rows.filter((row) => row.event.id === choices.event);
    if (choices.component) return rows.filter((row) => row.component.name === choices.component);
    return rows;
  }

  function linkedTitle(rows, choices) {
    if (!choices.event && !choices.component) return null;
    const row = rows[0];
    const name = choices.component || (row ? row.event.name : 'event ' + choices.event);
    return make('p', {class: 'chosen'}, 'Only ' + name + '. ',
        make('a', {href: VelTarn.address(['fmea'])}, 'Show all components'));
  }

  function render(space, route, kept) {
    const fmea = VelTarn.fmea();
    space.append(make('h1', {tabindex: '-1'}, 'Failure modes and effects'));
    if (!fmea) {
      space.append(make('p', {class: 'empty'}, VelTarn.fmeaUnread() ?
        'The failure modes and effects could not be read; see above.' :
        'This result holds no failure modes and effects. They come with the cut sets of a top event, ' +
          'unless generateFMEAXML=false leaves them out.'));
      return;
    }
    const {choices} = route;
    const sorting = VelTarn.sorting(choices, '', 'ascending');
    const column = Columns.find((entry) => entry.key === sorting.key);
    const all = rowsOf(fmea);
    const linked = linkedRows(all, choices);
    const sorted = column ? VelTarn.sortBy(linked, column, sorting.descending) : linked;
    const state = {shown: sorted};
    const count = make('p', {class: 'count', role: 'status'});
    const body = make('tbody', {role: 'rowgroup'});
    const end = make('div', {class: 'table-end'});
    const fill = () => {
      state.shown = filterRows(sorted, choices);
      count.textContent = state.shown.length + ' of ' + all.length + ' events';
      state.rows.show(state.shown);
    };
    space.append(toolbar(choices, state, () => fill()), linkedTitle(linked, choices) || '', count,
        make('table', {class: 'table cards fmea', role: 'table', 'aria-label': 'Failure modes and effects'},
            VelTarn.tableHead(Columns, sorting), body), end);
    state.rows = new GrowingRows(body, end);
    fill();
    if (kept) state.rows.grow(kept.rows - state.rows.made);
    VelTarn.tellPlace = () => ({rows: state.rows.made});
  }

  VelTarn.views.fmea = {render};
}());
