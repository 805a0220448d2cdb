// Which designs a list or plot shows. The choices stand in the address line, and the menu takes them along
// from view to view, as it does with the design that is kept for comparison.
'use strict';

(function () {
  const make = VelTarn.make;

  const Places = {
    '': ['Anywhere', () => true],
    'best': ['First frontier or archive', (design) => design.ranks.includes(1) || design.archived],
    'front': ['First frontier', (design) => design.ranks.includes(1)],
    'archive': ['Archive', (design) => design.archived],
    'other': ['Other frontiers', (design) => design.ranks.some((rank) => rank > 1)],
  };
  const OnePopulation = {
    '': ['All', () => true],
    'front': ['Not dominated', (design) => design.kind === 'front'],
    'other': ['Dominated', (design) => design.kind === 'dominated'],
  };
  const Feasible = {
    '': ['All', () => true],
    'yes': ['Feasible', (design) => design.feasible === true],
    'no': ['Infeasible', (design) => design.feasible === false],
    'unknown': ['Not known', (design) => design.feasible === null],
  };

  const placesOf = (search) => (search.kind === 'CoitGA' ? OnePopulation : Places);

  /// The choices that views have in common.
  VelTarn.sharedChoices = (search, choices) => {
    const names = ['filter', 'in', 'feasible', 'with', 'design',
      ...search.measured.flatMap((place) => ['from' + place, 'to' + place])];
    return Object.fromEntries(names.filter((name) => choices[name]).map((name) => [name, choices[name]]));
  };

  const limit = (text) => (text === undefined || text.trim() === '' ? NaN : Number(text.replace(',', '.')));

  /// The designs that the choices leave.
  VelTarn.filterDesigns = (search, choices) => {
    const [, isPlace] = placesOf(search)[choices.in || ''] || placesOf(search)[''];
    const [, isFeasible] = Feasible[choices.feasible || ''] || Feasible[''];
    const limits = search.measured.map((place) => [place, limit(choices['from' + place]),
        limit(choices['to' + place])])
        .filter(([, from, to]) => !Number.isNaN(from) || !Number.isNaN(to));
    const matches = choices.filter ? VelTarn.matcher(choices.filter) : null;
    return search.designs.filter((design) => isPlace(design) && isFeasible(design) &&
        !limits.some(([place, from, to]) => design.values[place] < from || design.values[place] > to) &&
        (!matches || matches(VelTarn.designWords(design))));
  };

  /// The name of an objective as text that may break before the name of its tree.
  VelTarn.objectiveName = (name) => name.split(/(?=\()/)
      .flatMap((part, index) => [...(index === 0 ? [] : [make('wbr')]), ...VelTarn.breakable(part)]);

  /// A labelled list of choices: rows of value and text.
  VelTarn.choiceField = (label, rows, value, key, changed) => {
    const field = make('select', {'data-focus': key, 'change': () => changed(field.value)},
        ...rows.map(([name, text]) => make('option', {value: name, selected: name === value}, text)));
    return make('label', {class: 'field'}, make('span', {}, label), field);
  };

  /// A short text field, for figures. The pattern is what it takes.
  function figureField(label, value, key, changed) {
    const field = make('input', {'type': 'text', 'inputmode': 'decimal', 'value': value || '', 'data-focus': key,
      'class': 'figure-input', 'autocomplete': 'off', 'aria-label': label, 'input': () => {
        const wrong = field.value.trim() !== '' && Number.isNaN(limit(field.value));
        if (wrong) field.setAttribute('aria-invalid', 'true');
        else field.removeAttribute('aria-invalid');
        changed(field.value);
      }});
    return field;
  }

  function limitFields(search, choices, changed) {
    const given = search.measured.some((place) => choices['from' + place] || choices['to' + place]);
    return make('details', {'class': 'limits', 'open': given},
        make('summary', {'data-focus': 'limits'}, 'Limits'),
        ...search.measured.map((place) => {
          const {name} = search.objectives[place];
          return make('div', {class: 'limit'}, make('span', {class: 'limit-name'}, ...VelTarn.objectiveName(name)),
              'from ', figureField(name + ', from', choices['from' + place], 'from' + place,
                  (value) => changed({['from' + place]: value})),
              ' to ', figureField(name + ', to', choices['to' + place], 'to' + place,
                  (value) => changed({['to' + place]: value})));
        }));
  }

  /// The fields of the filter with more controls behind them. `fill` shows the designs that are left, now
  /// and after every change; the count says how many these are.
  VelTarn.designToolbar = (search, fill, ...more) => {
    const count = make('p', {class: 'count', role: 'status'});
    const show = () => {
      const left = VelTarn.filterDesigns(search, VelTarn.currentRoute().choices);
      count.textContent = left.length + ' of ' + VelTarn.countOf(search.designs.length, 'design');
      fill(left);
    };
    const changed = (choices) => {
      VelTarn.keepChoices(choices);
      VelTarn.updateMenu();
      show();
    };
    const {choices} = VelTarn.currentRoute();
    const feasible = Object.entries(Feasible).filter(([name]) =>
      name === '' || (search.bounds ? name !== 'unknown' : name !== 'no'));
    const rows = (table) => Object.entries(table).map(([name, [text]]) => [name, text]);
    const bar = make('div', {class: 'designs-toolbar'},
        make('div', {class: 'toolbar'},
            VelTarn.filterField('Filter by number or choice', choices.filter, 'filter',
                (filter) => changed({filter})),
            VelTarn.choiceField(search.kind === 'CoitGA' ? 'Kind' : 'Found in', rows(placesOf(search)),
                choices.in || '', 'in', (value) => changed({in: value})),
            VelTarn.choiceField('Feasibility', feasible.map(([name, [text]]) => [name, text]),
                choices.feasible || '',
                'feasible', (value) => changed({feasible: value})),
            ...more),
        limitFields(search, choices, changed), count);
    return {bar, show};
  };

  /// What is said once and not for each design: why feasibility is not known.
  VelTarn.boundsNote = (search) => (search.bounds ? '' : make('p', {class: 'hint bounds-note'},
      'The bounds of the objectives are not known here, because the file that holds them lies not beside this ' +
      'page. Designs in the archive are feasible; of the others it cannot be said.'));

  /// The design that waits for another to be compared with.
  VelTarn.keptDesign = (search) => search.byKey.get(VelTarn.currentRoute().choices.with) || null;

  /// Says which design waits, and how to let it go.
  VelTarn.keptNote = (search) => {
    const kept = VelTarn.keptDesign(search);
    if (!kept) return '';
    const {path, choices} = VelTarn.currentRoute();
    return make('p', {class: 'chosen kept', role: 'status'}, VelTarn.designLink(kept),
        ' is kept for comparison: choose another one. ',
        make('a', {'href': VelTarn.address(path, {...choices, with: ''}), 'data-focus': 'let-go'}, 'Let it go'));
  };

  VelTarn.designLink = (design, text) => make('a',
      {href: VelTarn.address(['design', design.key]), class: 'design-link'}, text || 'Design ' + design.key);

  /// The way to a comparison: keeps this design, or compares it with the one that is kept.
  VelTarn.compareLink = (search, design) => {
    const kept = VelTarn.keptDesign(search);
    const {path, choices} = VelTarn.currentRoute();
    if (kept === design) return make('span', {class: 'kept-mark'}, 'Kept');
    const [href, text, label] = kept ?
      [VelTarn.address(['compare', kept.key, design.key]), 'Compare with ' + kept.key,
        'Compare with ' + kept.key + ': design ' + design.key] :
      [VelTarn.address(path, {...choices, with: design.key}), 'Compare', 'Compare design ' + design.key +
          ' with another'];
    return make('a', {href, 'aria-label': label, 'data-focus': 'compare-' + design.key}, text);
  };
}());
