// The cut sets of one top event, grouped by order.
'use strict';

(function () {
  const make = VelTarn.make;

  const Columns = [
    {key: 'events', title: 'Events', value: (row) => row.text},
    {key: 'unavailability', title: 'Unavailability', numeric: true,
      value: (row) => row.unavailability.value},
    {key: 'frequency', title: 'Frequency', numeric: true, value: (row) => row.frequency.value},
    {key: 'share', title: 'Importance', numeric: true, value: (row) => row.share},
  ];

  /// The part of the top event's unavailability that the cut set alone would cause.
  const shareText = (share) => {
    if (Number.isNaN(share)) return '\u2013';
    if (share !== 0 && share < 0.01) return '< 0.01 %';
    return share.toFixed(2) + ' %';
  };

  function rowsOf(tree, cutSets) {
    const names = new Map();
    const nameOf = (id) => {
      if (!names.has(id)) names.set(id, VelTarn.eventName(id));
      return names.get(id);
    };
    const total = tree.unavailability.value;
    return cutSets.map((cutSet) => ({
      ...cutSet,
      names: cutSet.events.map(nameOf),
      text: cutSet.events.map(nameOf).join(', '),
      share: total > 0 ? cutSet.unavailability.value / total * 100 : NaN,
    }));
  }

  /// Group heads between the rows; an order of which nothing is left has none.
  function withHeads(rows) {
    const counts = new Map();
    rows.forEach((row) => counts.set(row.order, (counts.get(row.order) || 0) + 1));
    const listed = [];
    let order = null;
    for (const row of rows) {
      if (row.order !== order) {
        order = row.order;
        listed.push({head: order, count: counts.get(order)});
      }
      listed.push(row);
    }
    return listed;
  }

  const Narrow = 680;  // Pixels; below it the figures of a row stand under its events.
  const LineHeight = 22;

  /// Known before the row is made, from the widths of its texts.
  function heightOf(row, width) {
    if (row.head !== undefined) return 40;
    const narrow = width < Narrow;
    const room = Math.max(80, narrow ? width - 26 : width - 448);
    const lines = row.names.reduce((sum, name) => sum + VelTarn.lineCount(name, room), 0);
    return Math.max(1, lines) * LineHeight + 14 + (narrow ? LineHeight : 0);
  }

  const figureCell = (label, text) => make('div', {'class': 'figure', 'role': 'cell',
    'data-label': label}, text || '\u2013');

  function eventsCell(row) {
    if (row.events.length === 0) return make('div', {class: 'events', role: 'cell'}, 'No event: always true');
    return make('div', {class: 'events', role: 'cell'}, ...row.events.map((id) =>
      make('div', {class: 'event-line'}, VelTarn.eventLink(id))));
  }

  function makeRow(row, index) {
    const place = {'class': 'row', 'role': 'row', 'aria-rowindex': index + 2};
    if (row.head !== undefined) {
      const text = 'Order ' + row.head + ': ' + row.count + (row.count === 1 ? ' cut set' : ' cut sets');
      return make('div', {...place, 'class': 'row group'},
          make('div', {'role': 'cell', 'aria-colspan': Columns.length}, text));
    }
    return make('div', place, eventsCell(row),
        figureCell('Unavailability', row.unavailability.text),
        figureCell('Frequency', row.frequency.text),
        figureCell('Importance', shareText(row.share)));
  }

  function headRow(sorting) {
    return make('div', {'class': 'row head', 'role': 'row', 'aria-rowindex': '1'},
        ...Columns.map((column) => make('div', {'role': 'columnheader',
          'class': column.numeric ? 'figure' : 'events', 'aria-sort': VelTarn.ariaSort(column, sorting)},
        VelTarn.sortButton(column, sorting))));
  }

  const exportRows = (rows) => [
    ['Order', 'Unavailability', 'Frequency', 'Importance in per cent', 'Events'],
    ...rows.map((row) => [row.order, row.unavailability.text, row.frequency.text,
      Number.isNaN(row.share) ? '' : row.share.toPrecision(6), ...row.names])];

  /// Sorted inside each order, lowest order first: an order is a statement of its own.
  function sortRows(rows, sorting) {
    const column = Columns.find((entry) => entry.key === sorting.key) || Columns[1];
    return rows.slice().sort((left, right) => left.order - right.order ||
        VelTarn.compare(column.value(left), column.value(right), sorting.descending));
  }

  function chosenEvent(id) {
    return make('p', {class: 'chosen'}, 'Only cut sets with ', VelTarn.eventLink(id), '. ',
        make('a', {'href': VelTarn.address(VelTarn.currentRoute().path,
            {...VelTarn.currentRoute().choices, event: ''}), 'data-focus': 'all-events'}, 'Show all'));
  }

  function toolbar(route, tree, state, fill) {
    const name = VelTarn.fileName(VelTarn.results('FaultTrees').model, tree.name, 'cut-sets');
    return make('div', {class: 'toolbar'},
        VelTarn.filterField('Filter by event', route.choices.filter, 'filter', (filter) => {
          VelTarn.keepChoices({filter});
          fill(filter);
        }),
        VelTarn.button('Copy', () => VelTarn.copyRows(exportRows(state.shown),
            state.shown.length + ' cut sets'), 'copy'),
        VelTarn.button('Save as CSV', () => VelTarn.saveCsv(name, exportRows(state.shown)), 'csv'));
  }

  function render(space, route, kept) {
    const tree = VelTarn.treeHead(space, route, 'cutsets');
    if (tree.tops.length === 0) {
      space.append(make('p', {class: 'empty'}, 'This top event has no fault tree, so it has no cut sets.'));
      return;
    }
    const file = VelTarn.cutSetsOf(tree.id);
    if (!file) throw new Error('The cut sets of this top event were not loaded; see above.');
    if (file.cutSets.length === 0) {
      space.append(make('p', {class: 'empty'}, 'No cut sets were found for this top event.'));
      return;
    }
    const sorting = VelTarn.sorting(route.choices, 'unavailability', 'descending');
    const event = route.choices.event || '';
    const all = rowsOf(tree, file.cutSets);
    const sorted = sortRows(event ? all.filter((row) => row.events.includes(event)) : all, sorting);
    const state = {shown: sorted};
    const count = make('p', {class: 'count', role: 'status'});
    const box = make('div', {'class': 'row-box cut-sets', 'role': 'rowgroup', 'tabindex': '0',
      'aria-label': 'Cut sets, scrolls'});
    const table = make('div', {'role': 'table', 'aria-label': 'Minimal cut sets', 'class': 'virtual'},
        make('div', {role: 'rowgroup', class: 'cut-sets-head'}, headRow(sorting)), box);
    let rowBox = null;
    const fill = (filter) => {
      const matches = VelTarn.matcher(filter);
      state.shown = filter ? sorted.filter((row) => matches(row.text)) : sorted;
      count.textContent = state.shown.length + ' of ' + all.length + ' cut sets';
      const listed = withHeads(state.shown);
      table.setAttribute('aria-rowcount', String(listed.length + 1));
      rowBox.show(listed);
    };
    space.append(toolbar(route, tree, state, fill), event ? chosenEvent(event) : '', count, table,
        make('p', {class: 'hint'}, 'Importance is the unavailability of the cut set as a share of that ' +
            'of the top event.'));
    VelTarn.printWith(space, () => withHeads(state.shown).map((row, index) => () => makeRow(row, index)));
    rowBox = new VelTarn.RowBox(box, heightOf, makeRow);
    fill(route.choices.filter || '');
    if (kept) box.scrollTop = kept.top;
    VelTarn.tellPlace = () => ({top: box.scrollTop});
  }

  VelTarn.views.cutsets = {render};
}());
