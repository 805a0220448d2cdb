// All top events side by side.
'use strict';

(function () {
  const make = VelTarn.make;
  const OwnOrders = 4;  // Orders with a column of their own; the rest shares one.
  let firstDirection = 'descending';

  const countOf = (tree, test) => tree.summary
      .filter((entry) => !entry.pruned && test(entry.order))
      .reduce((sum, entry) => sum + entry.count, 0);

  function prunedText(tree, test) {
    const pruned = tree.summary.filter((entry) => entry.pruned && test(entry.order))
        .reduce((sum, entry) => sum + entry.count, 0);
    return pruned > 0 ? pruned + ' pruned' : '';
  }

  function orderColumn(key, title, test) {
    return {
      key, title, numeric: true,
      value: (tree) => countOf(tree, test),
      text: (tree) => [String(countOf(tree, test)), prunedText(tree, test)].filter(Boolean).join(', '),
    };
  }

  function orderColumns(trees) {
    const highest = Math.max(0, ...trees.flatMap((tree) => tree.summary.map((entry) => entry.order)));
    const columns = [];
    for (let order = 1; order <= Math.min(highest, OwnOrders); ++order) {
      columns.push(orderColumn('order' + order, 'Order ' + order, (other) => other === order));
    }
    if (highest > OwnOrders) {
      columns.push(orderColumn('higher', 'Order ' + (OwnOrders + 1) + '+', (other) => other > OwnOrders));
    }
    return columns;
  }

  const figureColumn = (key, title) => ({key, title, numeric: true,
    value: (tree) => tree[key].value, text: (tree) => tree[key].text});

  function columnsOf(trees) {
    return [
      {key: 'name', title: 'Top event', value: (tree) => tree.name, text: (tree) => tree.name},
      figureColumn('unavailability', 'Unavailability'),
      figureColumn('frequency', 'Frequency'),
      figureColumn('severity', 'Severity'),
      figureColumn('sil', 'SIL'),
      orderColumn('cutsets', 'Cut sets', () => true),
      ...orderColumns(trees),
    ];
  }

  /// The decades that hold all positive unavailabilities, none of which is above 1; null when there
  /// are none.
  VelTarn.decades = (trees) => {
    const exponents = trees.map((tree) => tree.unavailability.value).filter((value) => value > 0)
        .map((value) => Math.log10(value));
    if (exponents.length === 0) return null;
    const low = Math.min(0, Math.floor(Math.min(...exponents)));
    return {low: low - 1, high: Math.min(0, Math.max(Math.ceil(Math.max(...exponents)), low + 1))};
  };

  /// Where a figure stands between the decades. It repeats the figure beside it, so screen readers
  /// are spared it.
  VelTarn.scaleBar = (value, decades) => {
    if (!decades || !(value > 0)) return null;
    const share = (Math.log10(value) - decades.low) / (decades.high - decades.low);
    const fill = make('span', {class: 'scale-fill'});
    fill.style.width = (Math.min(1, Math.max(0, share)) * 100).toFixed(1) + '%';
    return make('span', {'class': 'scale', 'aria-hidden': 'true'}, fill);
  };

  function nameCell(tree) {
    // All that have no tree share one number, so it leads nowhere.
    const name = tree.tops.length === 0 ? make('span', {}, ...VelTarn.breakable(tree.name),
        ' ', make('span', {class: 'tag'}, 'No fault tree')) :
      make('a', {href: VelTarn.address(['tree', tree.id])}, ...VelTarn.breakable(tree.name));
    return make('th', {scope: 'row', role: 'rowheader', class: 'name'}, name,
        tree.description ? make('span', {class: 'description'}, tree.description) : null);
  }

  function cell(column, tree, decades) {
    if (column.key === 'name') return nameCell(tree);
    const text = column.text(tree) || '\u2013';
    const content = [make('span', {class: 'number'}, text)];
    if (column.key === 'unavailability') {
      content.push(VelTarn.scaleBar(tree.unavailability.value, decades));
    }
    if (column.key === 'cutsets' && tree.cutSetCount > 0) {
      content[0] = make('a', {'href': VelTarn.address(['tree', tree.id, 'cutsets']),
        'aria-label': text + ' cut sets of ' + tree.name}, text);
    }
    return make('td', {'role': 'cell', 'class': 'figure column-' + column.key,
      'data-label': column.title}, ...content);
  }

  function scaleLegend(decades) {
    if (!decades) return null;
    return make('p', {class: 'hint'}, 'The bars show the unavailability on a logarithmic scale from 1e' +
        decades.low + ' to 1e' + decades.high + '.');
  }

  function csvRows(columns, trees) {
    return [[...columns.map((column) => column.title), 'Description'],
      ...trees.map((tree) => [...columns.map((column) => column.text(tree)), tree.description])];
  }

  function render(space, route) {
    const results = VelTarn.results('FaultTrees');
    const trees = results.trees;
    const columns = columnsOf(trees);
    const decades = VelTarn.decades(trees);
    const sorting = VelTarn.sorting(route.choices, 'unavailability', firstDirection);
    const column = columns.find((entry) => entry.key === sorting.key) || columns[1];
    const sorted = VelTarn.sortBy(trees, column, sorting.descending);
    const body = make('tbody', {role: 'rowgroup'});
    const count = make('p', {class: 'count', role: 'status'});
    let shown = sorted;
    const fill = (filter) => {
      const matches = VelTarn.matcher(filter);
      shown = sorted.filter((tree) => matches(tree.name + ' ' + tree.description));
      count.textContent = shown.length + ' of ' + trees.length + ' top events';
      body.replaceChildren(...shown.map((tree) => make('tr', {role: 'row'},
          ...columns.map((entry) => cell(entry, tree, decades)))));
    };
    space.append(make('h1', {tabindex: '-1'}, VelTarn.heading));
    if (trees.length === 0) {
      space.append(make('p', {class: 'empty'}, 'The model has no hazards and no outputs to analyse, ' +
          'so there are no fault trees.'));
      return;
    }
    fill(route.choices.filter || '');
    space.append(
        make('div', {class: 'toolbar'},
            VelTarn.filterField('Filter top events', route.choices.filter, 'filter', (filter) => {
              VelTarn.keepChoices({filter});
              fill(filter);
            }),
            VelTarn.button('Save as CSV', () => VelTarn.saveCsv(
                VelTarn.fileName(results.model, 'top-events'), csvRows(columns, shown)), 'csv')),
        count,
        make('table', {class: 'table cards overview', role: 'table', 'aria-label': 'Top events'},
            VelTarn.tableHead(columns, sorting), body),
        scaleLegend(decades) || '');
  }

  VelTarn.views.overview = {render};

  /// Shows all top events, and from then on whatever the address line asks for.
  window.overviewTransform = (variable, direction) => {
    firstDirection = direction;
    VelTarn.start(variable);
  };
}());
