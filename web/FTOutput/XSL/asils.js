// Safety allocations: which integrity levels the events of the components may get, and what each
// choice costs.
'use strict';

(function () {
  const make = VelTarn.make;
  const Levels = [5, 4, 3, 2, 1, 0];  // The highest asks most of a component.

  const countOf = (allocation, level) =>
    allocation.levels.filter((entry) => entry.level === level).length;

  /// A column for each level that some allocation gives.
  function listColumns(allocations) {
    const used = Levels.filter((level) => allocations.some((entry) => countOf(entry, level) > 0));
    return [
      {key: 'number', title: 'Allocation', value: (entry) => Number(entry.id)},
      {key: 'cost', title: 'Cost', numeric: true, value: (entry) => entry.cost.value},
      ...used.map((level) => ({key: 'level' + level, title: 'Level ' + level, numeric: true,
        value: (entry) => countOf(entry, level), text: (entry) => String(countOf(entry, level))})),
    ];
  }

  const countText = (count) => count + (count === 1 ? ' event' : ' events');

  const figureCell = (label, text) =>
    make('td', {'role': 'cell', 'class': 'figure', 'data-label': label}, text || '\u2013');

  const makeListRow = (columns, entry) => make('tr', {role: 'row'},
      make('th', {scope: 'row', role: 'rowheader', class: 'name'},
          make('a', {href: VelTarn.address(['allocations', entry.id])}, 'Allocation ' + entry.id)),
      figureCell('Cost', entry.cost.text),
      ...columns.slice(2).map((column) => figureCell(column.title, column.text(entry))));

  function table(label, columns, sorting, rows) {
    return make('table', {'class': 'table cards allocations', 'role': 'table', 'aria-label': label},
        VelTarn.tableHead(columns, sorting), make('tbody', {role: 'rowgroup'}, ...rows));
  }

  function renderList(space, route, allocations) {
    const columns = listColumns(allocations);
    const sorting = VelTarn.sorting(route.choices, 'cost', 'ascending');
    const column = columns.find((entry) => entry.key === sorting.key) || columns[1];
    const sorted = VelTarn.sortBy(allocations, column, sorting.descending);
    space.append(make('h1', {tabindex: '-1'}, 'Safety allocations'),
        make('p', {class: 'count'}, allocations.length + ' in all'),
        table('Safety allocations', columns, sorting, sorted.map((entry) => makeListRow(columns, entry))),
        make('p', {class: 'hint'}, 'The columns of the levels count the events that are given each. ' +
            'An allocation itself shows them one by one.'));
  }

  const eventColumns = [
    {key: 'component', title: 'Component', value: (row) => row.component},
    {key: 'event', title: 'Event', value: (row) => row.event},
    {key: 'level', title: 'Level', numeric: true, value: (row) => row.level},
  ];

  const levelText = (row) => (Number.isNaN(row.level) ? '' : String(row.level));

  /// Ids of an encoding are not those of the tree's events, so names have to bring both together.
  function eventsByName() {
    const table = VelTarn.fmea();
    return new Map(table ? Array.from(table.events.values(), (event) => [event.name, event]) : []);
  }

  function makeEventRow(row, known) {
    const event = known.get(row.component === '' ? row.event : row.component + '.' + row.event);
    const component = event ? event.component.name : '';
    const linked = (name, choices) => (event ?
      make('a', {href: VelTarn.address(['fmea'], choices)}, ...VelTarn.breakable(name)) :
      make('span', {}, ...VelTarn.breakable(name)));
    return make('tr', {role: 'row'},
        make('td', {'role': 'cell', 'data-label': 'Component'}, linked(row.component || 'None', {component})),
        make('th', {'scope': 'row', 'role': 'rowheader', 'class': 'name', 'data-label': 'Event'},
            linked(row.event, {event: event && event.id}),
            event && event.description ? make('span', {class: 'description'}, event.description) : null),
        figureCell('Level', levelText(row)));
  }

  const exportRows = (rows) => [eventColumns.map((column) => column.title),
    ...rows.map((row) => [row.component, row.event, levelText(row)])];

  function toolbar(route, allocation, state, fill) {
    const name = VelTarn.fileName(VelTarn.results('FaultTrees').model, 'allocation', allocation.id);
    return make('div', {class: 'toolbar'},
        VelTarn.filterField('Filter by component or event', route.choices.filter, 'filter', (filter) => {
          VelTarn.keepChoices({filter});
          fill(filter);
        }),
        VelTarn.button('Save as CSV', () => VelTarn.saveCsv(name, exportRows(state.shown)), 'csv'));
  }

  function renderOne(space, route, allocation) {
    const sorting = VelTarn.sorting(route.choices, '', 'ascending');
    const column = eventColumns.find((entry) => entry.key === sorting.key);
    const sorted = column ? VelTarn.sortBy(allocation.levels, column, sorting.descending) : allocation.levels;
    const known = eventsByName();
    const count = make('p', {class: 'count', role: 'status'});
    const shownTable = table('Levels of allocation ' + allocation.id, eventColumns, sorting, []);
    const state = {shown: sorted};
    const fill = (filter) => {
      const matches = VelTarn.matcher(filter);
      state.shown = sorted.filter((row) => matches(row.component + '.' + row.event));
      count.textContent = state.shown.length + ' of ' + sorted.length + ' events';
      shownTable.tBodies[0].replaceChildren(...state.shown.map((row) => makeEventRow(row, known)));
    };
    space.append(
        make('p', {class: 'trail'}, make('a', {href: VelTarn.address(['allocations'])}, 'All safety allocations')),
        make('h1', {tabindex: '-1'}, 'Safety allocation ' + allocation.id),
        VelTarn.figureList([['Cost', allocation.cost],
          ...Levels.filter((level) => countOf(allocation, level) > 0)
              .map((level) => ['Level ' + level, countText(countOf(allocation, level))])]),
        toolbar(route, allocation, state, fill), count, shownTable);
    fill(route.choices.filter || '');
  }

  VelTarn.views.allocations = {
    render(space, route) {
      const {allocations} = VelTarn.results('FaultTrees');
      if (allocations.length === 0) {
        space.append(make('h1', {tabindex: '-1'}, 'Safety allocations'),
            make('p', {class: 'empty'}, 'Safety allocations are not part of this result.'));
        return;
      }
      if (route.path[1] === undefined) {
        renderList(space, route, allocations);
        return;
      }
      const allocation = allocations.find((entry) => entry.id === route.path[1]);
      if (!allocation) throw new Error('There is no safety allocation ' + route.path[1] + '.');
      renderOne(space, route, allocation);
    },
  };
}());
