// What the safety levels of one design cost, and whether they suffice.
'use strict';

(function () {
  const make = VelTarn.make;
  const CostOf = [0, 10, 100, 1000, 10000, 100000];
  const ListedSets = 200;  // More are for a file.

  const cell = (label, text, numeric) => make('td', {'role': 'cell', 'data-label': label,
    'class': numeric ? 'figure' : null}, text);

  function table(label, titles, rows) {
    return make('table', {'class': 'table level-costs', 'role': 'table', 'aria-label': label},
        make('thead', {role: 'rowgroup'}, make('tr', {role: 'row'},
            ...titles.map((title, index) => make('th', {'scope': 'col', 'role': 'columnheader',
              'class': index > 0 ? 'figure' : null}, title)))),
        make('tbody', {role: 'rowgroup'}, ...rows));
  }

  /// How many events stand at each level, and what they cost together.
  function levelTable(rows) {
    const levels = Array.from(new Set(rows.map((row) => row.level))).sort((left, right) => right - left);
    const costOf = (level) => CostOf[level] || 0;
    const lines = levels.map((level) => [level, rows.filter((row) => row.level === level).length]);
    const total = lines.reduce((sum, [level, count]) => sum + costOf(level) * count, 0);
    const line = (name, events, each, cost) => make('tr', {role: 'row'},
        make('th', {scope: 'row', role: 'rowheader', class: 'name'}, name), cell('Events', events, true),
        cell('Cost of each', each, true), cell('Cost', cost, true));
    return table('Cost of the levels', ['Level', 'Events', 'Cost of each', 'Cost'], [
      ...lines.map(([level, count]) => line('Level ' + level, String(count), String(costOf(level)),
          String(costOf(level) * count))),
      line('All', String(rows.length), '', String(total))]);
  }

  const setText = (set) => set.events.map((event) => event.name + ' (' + event.level + ')').join(', ');

  function setRow(set) {
    return make('tr', {role: 'row'},
        make('th', {scope: 'row', role: 'rowheader', class: 'name'}, ...VelTarn.breakable(set.hazard)),
        make('td', {'role': 'cell', 'data-label': 'Events and their levels'}, make('ul', {class: 'plain'},
            ...set.events.map((event) => make('li', {}, ...VelTarn.breakable(event.name), ' ',
                make('span', {class: 'tag'}, 'level ' + event.level))))),
        cell('Sum', String(set.sum), true), cell('Needed', String(set.needed), true),
        cell('Missing', String(set.needed - set.sum), true));
  }

  const exportRows = (sets) => [['Hazard', 'Sum', 'Needed', 'Missing', 'Events and their levels'],
    ...sets.map((set) => [set.hazard, set.sum, set.needed, set.needed - set.sum, setText(set)])];

  function setTable(search, design, sets) {
    const head = ['Hazard', 'Events and their levels', 'Sum', 'Needed', 'Missing'];
    return make('div', {},
        make('div', {class: 'toolbar'}, VelTarn.button('Save invalid cut sets as CSV', () => VelTarn.saveCsv(
            VelTarn.fileName(search.model, 'design', design.key, 'invalid-cut-sets'), exportRows(sets)),
                'csv-sets')),
        make('table', {'class': 'table cards invalid-sets', 'role': 'table', 'aria-label': 'Invalid cut sets'},
            make('thead', {role: 'rowgroup', class: 'plain-head'}, make('tr', {role: 'row'},
                ...head.map((title, index) => make('th', {'scope': 'col', 'role': 'columnheader',
                  'class': index > 1 ? 'figure' : null}, title)))),
            make('tbody', {role: 'rowgroup'}, ...sets.slice(0, ListedSets).map(setRow))),
        sets.length > ListedSets ? make('p', {class: 'hint'}, 'These are the ' + ListedSets + ' that lack most; ' +
            (sets.length - ListedSets) + ' more are in the CSV file.') : null);
  }

  function invalidSection(search, design) {
    const title = (text) => make('h2', {}, text);
    if (!search.hazards) {
      return make('section', {}, title('Invalid cut sets'),
          make('p', {class: 'hint'}, 'Hazards and cut sets are not ' +
          'known here, because the file that holds them does not lie beside this page.'));
    }
    const sets = VelTarn.invalidCutSets(search, design);
    const counted = design.evaluations.get('ASILInvalids');
    return make('section', {'class': 'invalid'}, title('Invalid cut sets (' + sets.length + ')'),
        make('p', {}, sets.length === 0 ? 'In every cut set of every hazard the levels add up to the level of the hazard.' :
          'The levels of the events of a cut set have to add up to the level of the hazard. In these they do not.'),
        counted !== undefined && Number(counted) !== sets.length ? make('p', {class: 'hint'},
            'The search itself counted ' + counted + '.') : null,
        sets.length === 0 ? null : setTable(search, design, sets));
  }

  /// Cost and invalid cut sets of a design that chooses safety levels.
  VelTarn.levelSections = (search, design) => [
    make('section', {}, make('h2', {}, 'Cost of the levels'), levelTable(VelTarn.choicesOf(design).rows)),
    invalidSection(search, design)];
}());
