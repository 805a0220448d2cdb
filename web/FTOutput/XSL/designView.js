// One design: its values, and what it chooses for each component or event.
'use strict';

(function () {
  const make = VelTarn.make;

  /// The design of a part of the address. Throws when there is none.
  VelTarn.findDesign = (search, key) => {
    const design = search.byKey.get(key);
    if (!design) throw new Error('There is no design ' + key + ' among these results.');
    return design;
  };

  const boundsOf = (objective) => [
    Number.isNaN(objective.lower) ? '' : 'at least ' + objective.lower,
    Number.isNaN(objective.upper) ? '' : 'at most ' + objective.upper].filter((text) => text !== '').join(', ');

  function valueTable(search, design) {
    const titles = ['Objective', 'Goal', ...(search.bounds ? ['Bounds'] : []), 'Value'];
    const cell = (label, content, numeric) => make('td', {'role': 'cell', 'data-label': label,
      'class': numeric ? 'figure' : null}, content);
    return make('table', {'class': 'table cards values', 'role': 'table', 'aria-label': 'Values of the objectives'},
        make('thead', {role: 'rowgroup', class: 'plain-head'}, make('tr', {role: 'row'}, ...titles.map((title) =>
          make('th', {'scope': 'col', 'role': 'columnheader', 'class': title === 'Value' ? 'figure' : null},
              title)))),
        make('tbody', {role: 'rowgroup'}, ...search.measured.map((place) => {
          const objective = search.objectives[place];
          const broken = design.broken.includes(objective);
          return make('tr', {role: 'row', class: broken ? 'differs' : null},
              make('th', {scope: 'row', role: 'rowheader', class: 'name'}, ...VelTarn.objectiveName(objective.name)),
              cell('Goal', objective.goal || '\u2013'),
              search.bounds ? cell('Bounds', make('span', {}, boundsOf(objective) || 'none', ' ',
                  broken ? make('span', {class: 'tag single'}, 'Broken') : null)) : null,
              cell('Value', design.texts[place] || '\u2013', true));
        })));
  }

  const compareLink = (design, other) => make('a', {'href': VelTarn.address(['compare', design.key, other.key]),
    'aria-label': 'Compare design ' + design.key + ' with design ' + other.key}, 'compare');

  const NamedDominators = 3;

  /// Those before and behind it on the first frontier; of a design that is not there, some that beat it.
  function neighbours(search, design) {
    const [first] = search.measured;
    if (first === undefined) return '';
    const front = VelTarn.sortBy(search.designs.filter((other) => other.kind === 'front'),
        {value: (other) => other.values[first]}, false);
    const at = front.indexOf(design);
    if (at < 0) return dominatorList(search, design);
    if (front.length < 2) return '';
    const {name} = search.objectives[first];
    const link = (other, text) => (other ? make('li', {}, text, VelTarn.designLink(other),
        ' (' + name + ' ' + other.texts[first] + '), ', compareLink(design, other)) : null);
    return make('ul', {class: 'plain neighbours'}, link(front[at - 1], 'Before it on the front: '),
        link(front[at + 1], 'Behind it on the front: '));
  }

  function dominatorList(search, design) {
    const better = VelTarn.dominators(search, design);
    if (better.length === 0) return '';
    return make('div', {}, make('p', {}, VelTarn.countOf(better.length, 'design') + ' of the best ' +
        (better.length === 1 ? 'is' : 'are') + ' better in some objective and worse in none' +
        (better.length > NamedDominators ? ', such as' : '') + ':'),
    make('ul', {class: 'plain neighbours'}, ...better.slice(0, NamedDominators).map((other) =>
      make('li', {}, VelTarn.designLink(other), ', ', compareLink(design, other)))));
  }

  /// Asks for the number of another design, and goes to the comparison.
  function compareForm(search, design) {
    const field = make('input', {'type': 'text', 'inputmode': 'numeric', 'class': 'figure-input',
        'data-focus': 'other',
      'autocomplete': 'off'});
    const problem = make('p', {class: 'field-problem', role: 'alert'});
    const kept = VelTarn.keptDesign(search);
    if (kept && kept !== design) field.value = kept.key;
    return make('form', {'class': 'compare-form', 'submit': (event) => {
      event.preventDefault();
      const other = search.byKey.get(field.value.trim());
      problem.textContent = other ? '' : 'There is no design ' + field.value.trim() + '.';
      if (other) window.location.hash = VelTarn.address(['compare', design.key, other.key]);
    }}, make('label', {class: 'field'}, make('span', {}, 'Compare with design number'), field),
    make('button', {type: 'submit', class: 'button'}, 'Compare'), problem);
  }

  const indent = (row) => (row.depth === 0 ? null : 'padding-inline-start: ' +
      (0.75 + Math.min(row.depth, 10) * 1.25) + 'rem');

  /// The head cells of a row of choices; components inside others are indented under them.
  VelTarn.choiceHeads = (choices, row) => row.names.map((name, index) => {
    const last = index === row.names.length - 1;
    const cell = make(last ? 'th' : 'td', {'scope': last ? 'row' : null, 'role': last ? 'rowheader' : 'cell',
      'class': 'name', 'data-label': choices.heads[index]},
    row.depth > 0 ? make('span', {'class': 'depth', 'aria-hidden': 'true'}, '\u2514') : null,
        ...VelTarn.breakable(name),
    row.depth > 0 ? make('span', {class: 'off-screen'}, ', level ' + (row.depth + 1) + ' of the hierarchy') : null);
    // A style attribute in markup would do the same; pages from disk allow either.
    if (indent(row)) cell.style.cssText = indent(row);
    return cell;
  });

  function choiceTable(choices, rows) {
    return make('table', {'class': 'table cards choices', 'role': 'table', 'aria-label': 'Choices'},
        make('thead', {role: 'rowgroup', class: 'plain-head'}, make('tr', {role: 'row'},
            ...[...choices.heads, ...choices.columns].map((title) =>
                make('th', {scope: 'col', role: 'columnheader'}, title)))),
        make('tbody', {role: 'rowgroup'}, ...rows.map((row) => make('tr', {role: 'row'},
            ...VelTarn.choiceHeads(choices, row),
            ...row.cells.map((text, index) => make('td', {'role': 'cell', 'data-label': choices.columns[index]},
                text || '\u2013'))))));
  }

  const exportRows = (choices, rows) => [[...choices.heads, ...choices.columns],
    ...rows.map((row) => [...row.names.slice(0, -1), row.names.length > 1 ? row.names[row.names.length - 1] :
        row.fullName, ...row.cells])];

  function choiceSection(search, route, design) {
    const choices = VelTarn.choicesOf(design);
    const place = make('div');
    const count = make('p', {class: 'count', role: 'status'});
    const what = choices.levels ? 'event' : 'component';
    let shown = choices.rows;
    const fill = (filter) => {
      const matches = VelTarn.matcher(filter);
      shown = choices.rows.filter((row) => matches(row.fullName + ' ' + row.cells.join(' ')));
      count.textContent = shown.length + ' of ' + VelTarn.countOf(choices.rows.length, what);
      place.replaceChildren(choiceTable(choices, shown));
    };
    fill(route.choices.words || '');
    return make('section', {}, make('h2', {}, choices.levels ? 'Levels' : 'Choices'),
        make('div', {class: 'toolbar'},
            VelTarn.filterField('Filter by ' + what + ' or choice', route.choices.words, 'words', (words) => {
              VelTarn.keepChoices({words});
              fill(words);
            }),
            VelTarn.button('Save as CSV', () => VelTarn.saveCsv(VelTarn.fileName(search.model, 'design', design.key),
                exportRows(choices, shown)), 'csv')),
        count, place);
  }

  /// The sections about choices, or why there are none.
  function choiceParts(search, route, design) {
    let section = null;
    try {
      section = choiceSection(search, route, design);
    } catch (error) {
      return [VelTarn.problemPanel([error.message])];
    }
    return [...(VelTarn.choicesOf(design).levels ? VelTarn.levelSections(search, design) : []), section];
  }

  VelTarn.renderDesign = (space, route, search) => {
    const design = VelTarn.findDesign(search, route.path[1]);
    const altered = design.altered === '' ? [] : [['Last changed in generation', design.altered]];
    space.append(
        make('p', {class: 'trail'}, make('a', {href: '#/'}, 'All designs'), ' \u00b7 ',
            make('a', {href: VelTarn.address(['plot'], {design: design.key})}, 'Show it in the plot')),
        make('h1', {tabindex: '-1'}, 'Design ' + design.key),
        VelTarn.figureList([['Found in', VelTarn.placeText(design)],
            ['Feasibility', VelTarn.feasibleText(design)], ...altered]),
        design.broken.length > 0 ? make('p', {class: 'broken'}, VelTarn.brokenText(design) + '.') : '',
        make('div', {class: 'columns'},
            make('section', {}, make('h2', {}, 'Values'), valueTable(search, design)),
            make('section', {}, make('h2', {}, 'Compare'), compareForm(search, design), neighbours(search, design))),
        ...choiceParts(search, route, design), VelTarn.boundsNote(search));
  };
}());
