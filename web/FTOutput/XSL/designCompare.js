// Two designs side by side: what they are worth, and where they choose differently.
'use strict';

(function () {
  const make = VelTarn.make;

  const differenceText = (objective, before, after) => {
    if (Number.isNaN(before) || Number.isNaN(after)) return ['\u2013', ''];
    if (before === after) return ['same', ''];
    // Values have six places.
    const difference = Number((after - before).toFixed(6));
    const share = before === 0 ? '' : ' (' + (difference > 0 ? '+' : '') +
        Number((difference / Math.abs(before) * 100).toPrecision(3)) + ' %)';
    const better = objective.goal === '' ? '' : (after > before) === objective.maximise ? 'better' : 'worse';
    return [(difference > 0 ? '+' : '') + difference + share, better];
  };

  function headRow(titles, figures) {
    return make('thead', {role: 'rowgroup', class: 'plain-head'},
        make('tr', {role: 'row'}, ...titles.map((title, index) =>
      make('th', {'scope': 'col', 'role': 'columnheader', 'class': figures.includes(index) ? 'figure' : null},
          title))));
  }

  const cell = (label, content, name) => make('td', {'role': 'cell', 'data-label': label, 'class': name || null},
      content);

  const namesOf = (first, second) => ['Design ' + first.key, 'Design ' + second.key];

  function valueTable(search, first, second) {
    const names = namesOf(first, second);
    const rows = search.measured.map((place) => {
      const objective = search.objectives[place];
      const [text, better] = differenceText(objective, first.values[place], second.values[place]);
      return make('tr', {'role': 'row', 'class': text === 'same' ? null : 'differs'},
          make('th', {scope: 'row', role: 'rowheader', class: 'name'},
              ...VelTarn.objectiveName(VelTarn.objectiveText(objective))),
          cell(names[0], first.texts[place] || '\u2013', 'figure'),
              cell(names[1], second.texts[place] || '\u2013', 'figure'),
          cell('Difference', make('span', {}, text, ' ', better === '' ? null :
              make('span', {class: 'tag ' + better}, better)), 'figure'));
    });
    const line = (title, text) => make('tr', {role: 'row'},
        make('th', {scope: 'row', role: 'rowheader', class: 'name'}, title), cell(names[0], text(first), 'figure'),
        cell(names[1], text(second), 'figure'), cell('Difference', '', 'none'));
    rows.push(line('Found in', VelTarn.placeText), line('Feasibility', VelTarn.feasibleText));
    if (search.hazards && VelTarn.choicesOf(first).levels && VelTarn.choicesOf(second).levels) {
      rows.push(line('Invalid cut sets', (design) => String(VelTarn.invalidCutSets(search, design).length)));
    }
    return make('table', {'class': 'table cards compare-values', 'role': 'table',
        'aria-label': 'Values side by side'},
        headRow(['Objective', ...names, 'Difference'], [1, 2, 3]), make('tbody', {role: 'rowgroup'}, ...rows));
  }

  const rowText = (row) => (row ? row.cells.filter((text) => text !== '').join(', ') || '\u2013' : null);

  const replicaText = (choices, row) => {
    if (!row) return null;
    // How many replicas there are shows in the list of them.
    return choices.columns[0] === 'Replicas' ? row.cells[1] : rowText(row);
  };

  /// Where a row that only the second design has goes: behind the row that it follows there, and behind all
  /// that lies inside that one.
  function placeBehind(joined, last, row) {
    let place = last;
    while (place >= 0 && place + 1 < joined.length && joined[place + 1].row.depth > row.depth) ++place;
    return place;
  }

  /// Rows of both designs by component.
  function joinRows(first, second) {
    const mine = VelTarn.choicesOf(first);
    const other = VelTarn.choicesOf(second);
    const others = new Map(other.rows.map((row) => [row.key, row]));
    const joined = mine.rows.map((row) =>
        ({row, texts: [replicaText(mine, row), replicaText(other, others.get(row.key))]}));
    const known = new Map(joined.map((entry, index) => [entry.row.key, index]));
    const extra = new Map();
    let last = -1;
    for (const row of other.rows) {
      if (known.has(row.key)) last = known.get(row.key);
      else {
        const place = placeBehind(joined, last, row);
        extra.set(place, [...(extra.get(place) || []), {row, texts: [null, replicaText(other, row)]}]);
      }
    }
    return [...(extra.get(-1) || []), ...joined.flatMap((entry, index) => [entry, ...(extra.get(index) || [])])]
        .map((entry) => ({...entry, differs: entry.texts[0] !== entry.texts[1]}));
  }

  const shownText = (text) => (text === null ? make('span', {class: 'absent'}, 'not part of it') : text);

  function choiceTable(choices, names, rows) {
    return make('table', {'class': 'table cards compare-choices', 'role': 'table',
        'aria-label': 'Choices side by side'},
        headRow([...choices.heads, ...names, 'Difference'], []),
        make('tbody', {role: 'rowgroup'}, ...rows.map(({row, texts, differs}) =>
            make('tr', {'role': 'row', 'class': differs ? 'differs' : null},
            ...VelTarn.choiceHeads(choices, row), cell(names[0], shownText(texts[0])),
                cell(names[1], shownText(texts[1])),
            cell('Difference', make('span', {}, differs ? make('span', {class: 'tag different'}, 'differs') :
                'same'))))));
  }

  const exportRows = (choices, names, rows) => [[...choices.heads, ...names, 'Difference'],
      ...rows.map(({row, texts, differs}) =>
    [...(row.names.length > 1 ? row.names : [row.fullName]), ...texts.map((text) => text === null ? '' : text),
        differs ? 'differs' : 'same'])];

  function choiceSection(search, route, first, second) {
    const choices = VelTarn.choicesOf(first);
    const names = namesOf(first, second);
    const rows = joinRows(first, second);
    const count = rows.filter((row) => row.differs).length;
    const place = make('div');
    const told = make('p', {class: 'count', role: 'status'});
    let shown = rows;
    const fill = (only) => {
      shown = only ? rows.filter((row) => row.differs) : rows;
      told.textContent = count === 0 ? 'Both choose the same everywhere.' :
        count + ' of ' + VelTarn.countOf(rows.length, choices.levels ? 'event' : 'component') +
            (count === 1 ? ' differs' : ' differ');
      place.replaceChildren(choiceTable(choices, names, shown));
    };
    const only = make('input', {'type': 'checkbox', 'data-focus': 'only', 'change': () => {
      VelTarn.keepChoices({only: only.checked ? 'yes' : ''});
      fill(only.checked);
    }});
    only.checked = route.choices.only === 'yes';
    fill(only.checked);
    return make('section', {}, make('h2', {}, choices.levels ? 'Levels' : 'Choices'),
        make('div', {class: 'toolbar'}, make('label', {class: 'check'}, only, 'Only differences'),
            VelTarn.button('Save as CSV', () => VelTarn.saveCsv(VelTarn.fileName(search.model, 'designs',
                first.key, 'and', second.key),
                exportRows(choices, names, shown)), 'csv')),
        told, place);
  }

  VelTarn.renderComparison = (space, route, search) => {
    const [first, second] = [route.path[1], route.path[2]].map((key) => VelTarn.findDesign(search, key));
    space.append(
        make('p', {class: 'trail'}, make('a', {href: '#/'}, 'All designs')),
        make('h1', {tabindex: '-1'}, 'Designs ' + first.key + ' and ' + second.key),
        make('p', {class: 'compare-links'}, VelTarn.designLink(first), ' \u00b7 ', VelTarn.designLink(second),
            ' \u00b7 ',
            make('a', {'href': VelTarn.address(['compare', second.key, first.key]), 'data-focus': 'swap'},
                'Change places')),
        make('section', {}, make('h2', {}, 'Values'), valueTable(search, first, second)),
        choiceSection(search, route, first, second));
  };
}());
