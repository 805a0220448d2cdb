// The search in a few figures.
'use strict';

(function () {
  const make = VelTarn.make;
  let isWanted = false;

  const EncodingNames = {
    FixedEncoding: 'Fixed (replicas)',
    TreeEncoding: 'Tree (hierarchy)',
    FixedASILEncoding: 'Fixed (safety levels)',
    TreeASILEncoding: 'Tree (safety levels)',
  };

  /// What the designs themselves hold counts: the state has no word of its own for every encoding.
  function encodingText(search) {
    const [first] = search.designs;
    const found = first && /^<(\w+)/.exec(first.encoding);
    const name = found && EncodingNames[found[1]] ? found[1] : search.encoding;
    return EncodingNames[name] || name;
  }

  function timeText(text) {
    const seconds = Number(text);
    if (text === '' || Number.isNaN(seconds)) return text;
    if (seconds < 120) return text + ' s';
    const minutes = Math.floor(seconds / 60);
    return minutes < 120 ? minutes + ' min ' + Math.round(seconds % 60) + ' s' :
      Math.floor(minutes / 60) + ' h ' + minutes % 60 + ' min';
  }

  const rangeOf = (search, place) => {
    const values = search.designs.filter((design) => design.values[place] === design.values[place])
        .sort((left, right) => left.values[place] - right.values[place]);
    return values.length === 0 ? '' : values[0].texts[place] + ' to ' + values[values.length - 1].texts[place];
  };

  function boundsText(search, objective) {
    if (!search.bounds) return 'not known';
    const parts = [];
    if (!Number.isNaN(objective.lower)) parts.push('at least ' + objective.lower);
    if (!Number.isNaN(objective.upper)) parts.push('at most ' + objective.upper);
    return parts.join(', ') || 'none';
  }

  const cell = (label, text) => make('td', {'role': 'cell', 'data-label': label}, text || '\u2013');

  function objectiveTable(search) {
    return make('table', {'class': 'table cards objectives', 'role': 'table', 'aria-label': 'Objectives'},
        make('thead', {role: 'rowgroup', class: 'plain-head'},
            make('tr', {role: 'row'}, ...['Objective', 'Goal', 'Bounds', 'Values']
            .map((title) => make('th', {scope: 'col', role: 'columnheader'}, title)))),
        make('tbody', {role: 'rowgroup'}, ...search.objectives.map((objective, place) => make('tr', {role: 'row'},
            make('th', {scope: 'row', role: 'rowheader', class: 'name'}, ...VelTarn.objectiveName(objective.name)),
            cell('Goal', objective.goal || 'Not an objective of the model'),
                cell('Bounds', boundsText(search, objective)),
            cell('Values', objective.measured ? rangeOf(search, place) : 'not measured')))));
  }

  /// The head of the first view.
  VelTarn.searchSummary = (search) => {
    if (!isWanted) return '';
    const count = (test) => search.designs.filter(test).length;
    const pairs = [['Designs', String(search.designs.length)]];
    if (search.kind === 'CoitGA') pairs.push(['Not dominated', String(count((design) => design.kind === 'front'))]);
    else {
      pairs.push(['First frontier', String(count((design) => design.ranks.includes(1)))],
          ['Archive', String(count((design) => design.archived))]);
    }
    if (search.bounds) pairs.push(['Infeasible', String(count((design) => design.feasible === false))]);
    pairs.push(['Generation', search.generation], ['Time', timeText(search.time)],
        ['Encoding', encodingText(search)],
        ['Search', search.kind], ['Seed to go on with', search.seed]);
    return make('section', {'class': 'search-summary', 'aria-label': 'The search'},
        make('p', {class: 'trail'}, 'Model file ', make('b', {}, search.file || 'not named'), '. ',
            make('a', {href: search.address + '.xml'}, 'State of the search (XML)')),
        VelTarn.figureList(pairs), search.objectives.length > 0 ? objectiveTable(search) : '');
  };

  /// Puts the summary above the table of designs. The page gives the name of its state, which it has told
  /// the table already.
  window.optimisationSummaryTransform = () => { isWanted = true; };
}());
