// Safety allocations: which integrity levels the components may get, and what each choice costs.
'use strict';

(function () {
  const make = VelTarn.make;

  const columns = [
    {key: 'number', title: 'Allocation', numeric: true, value: (row) => Number(row.id)},
    {key: 'cost', title: 'Cost', numeric: true, value: (row) => row.cost.value},
    {key: 'levels', title: 'Levels'},
  ];

  function makeRow(row) {
    return make('tr', {role: 'row'},
        make('th', {'scope': 'row', 'role': 'rowheader', 'class': 'figure'}, row.id),
        make('td', {'role': 'cell', 'class': 'figure', 'data-label': 'Cost'}, row.cost.text || '\u2013'),
        make('td', {'role': 'cell', 'data-label': 'Levels'}, VelTarn.asilEncoding(row.encoding)));
  }

  VelTarn.views.allocations = {
    render(space, route) {
      const {allocations} = VelTarn.results('FaultTrees');
      space.append(make('h1', {tabindex: '-1'}, 'Safety allocations'));
      if (allocations.length === 0) {
        space.append(make('p', {class: 'empty'}, 'Safety allocations are not part of this result.'));
        return;
      }
      const sorting = VelTarn.sorting(route.choices, 'cost', 'ascending');
      const column = columns.find((entry) => entry.key === sorting.key) || columns[1];
      const sorted = VelTarn.sortBy(allocations, column, sorting.descending);
      space.append(make('table', {class: 'table cards', role: 'table', 'aria-label': 'Safety allocations'},
          VelTarn.tableHead(columns, sorting),
          make('tbody', {role: 'rowgroup'}, ...sorted.map(makeRow))));
    },
  };
}());
