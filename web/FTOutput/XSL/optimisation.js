// Results of a search for better designs: the page as a whole, and the table of all designs.
'use strict';

(function () {
  const make = VelTarn.make;
  let search = null;
  let firstSort = ['', ''];

  // -- The table

  const kindMark = (design) => make('span', {'class': 'kind-mark', 'aria-hidden': 'true'},
      VelTarn.designSymbol(design.kind));

  const objectiveColumns = () => search.measured.map((place) => ({
    key: 'o' + place, title: search.objectives[place].name, numeric: true, place,
    value: (design) => design.values[place], text: (design) => design.texts[place],
    cell: (design) => design.texts[place] || '\u2013'}));

  const placeOrder = (design) => (design.population ? 0 : Math.min(design.archived ? 0.5 : Infinity,
      ...design.ranks));

  function feasibleCell(design) {
    if (design.feasible !== false) return VelTarn.feasibleText(design);
    return make('span', {class: 'tag single', title: VelTarn.brokenText(design)}, 'Infeasible');
  }

  function columnsOf() {
    return [
      {key: 'number', title: 'Design', name: true, value: (design) => Number(design.id),
          text: (design) => design.key,
        cell: (design) => [kindMark(design), VelTarn.designLink(design)]},
      ...objectiveColumns(),
      {key: 'places', title: 'Found in', value: placeOrder, text: VelTarn.placeText, cell: VelTarn.placeText},
      {key: 'feasible', title: 'Feasible', value: (design) => (design.feasible === null ? 1 : design.feasible ?
          0 : 2),
        text: VelTarn.feasibleText, cell: feasibleCell},
      {key: 'compare', title: 'Compare', cell: (design) => VelTarn.compareLink(search, design)},
    ];
  }

  const LineHeight = 24;

  /// Rows stand side by side while there is room for every column, and as cards below that.
  class DesignRows {
    constructor(place, columns, label) {
      this.columns = columns;
      const objectives = columns.filter((column) => column.place !== undefined).length;
      this.wideFrom = 620 + objectives * 120;
      this.template = '7.5rem repeat(' + objectives + ', minmax(6.5rem, 1fr)) 11.5rem 6.5rem 9rem';
      this.head = make('div', {role: 'rowgroup', class: 'designs-head'});
      this.box = make('div', {'class': 'row-box designs', 'role': 'rowgroup', 'tabindex': '0',
        'aria-label': 'Designs, scrolls', 'data-focus': 'designs'});
      this.table = make('div', {'role': 'table', 'aria-label': label, 'class': 'virtual'}, this.head, this.box);
      place.append(this.table);
      this.rowBox = new VelTarn.RowBox(this.box, (row, width) => this.heightOf(row, width),
          (row, index) => this.makeRow(row, index));
      const observer = new ResizeObserver(() => this.fit());
      observer.observe(this.table);
      VelTarn.whenLeft(() => observer.disconnect());
    }

    isNarrow() { return this.box.clientWidth < this.wideFrom; }

    fit() {
      this.table.classList.toggle('card-rows', this.isNarrow());
      this.head.style.setProperty('--columns', this.template);
      this.box.style.setProperty('--columns', this.template);
    }

    /// A place for printed rows with the same columns.
    paper(space) {
      const place = make('div');
      place.style.setProperty('--columns', this.template);
      space.append(place);
      return place;
    }

    /// A card has a line for each column; names of objectives may need more.
    heightOf(design, width) {
      if (width >= this.wideFrom) return 40;
      if (this.cardWidth !== width) {
        this.cardWidth = width;
        this.cardLines = this.columns.reduce((sum, column) =>
          sum + (column.place === undefined ? 1 : VelTarn.lineCount(column.title, width * 0.55 - 20)), 0);
      }
      return this.cardLines * LineHeight + 18;
    }

    makeRow(design, index) {
      return make('div', {'class': 'row kind-' + design.kind, 'role': 'row', 'aria-rowindex': index + 2},
          ...this.columns.map((column) => make('div', {'role': column.name ? 'rowheader' : 'cell',
            'class': 'column-' + column.key + (column.numeric ? ' figure' : '')},
          column.name ? null : make('span', {'class': 'cell-label', 'aria-hidden': 'true'},
              ...VelTarn.objectiveName(column.title)),
          make('span', {class: 'cell-text'}, column.cell(design)))));
    }

    showHead(sorting) {
      this.head.replaceChildren(make('div', {'class': 'row head', 'role': 'row', 'aria-rowindex': '1'},
          ...this.columns.map((column) => make('div',
              {'role': 'columnheader', 'class': column.value ? (column.numeric ? 'figure' : null) : 'unsorted',
            'aria-sort': column.value ? VelTarn.ariaSort(column, sorting) : null},
          column.value ? VelTarn.sortButton(column, sorting) : column.title))));
    }

    show(designs) {
      this.table.setAttribute('aria-rowcount', String(designs.length + 1));
      this.fit();
      this.rowBox.show(designs);
    }
  }

  function exportRows(columns, designs) {
    const told = columns.filter((column) => column.text);
    return [[...told.map((column) => column.title), 'Choices'], ...designs.map((design) =>
      [...told.map((column) => column.text(design)), choicesText(design)])];
  }

  /// All choices of a design on one line; empty when the pages cannot read them.
  function choicesText(design) {
    try {
      return VelTarn.choicesOf(design).rows.map((row) => row.fullName + ': ' +
          row.cells.filter((cell) => cell !== '').join(', ')).join('; ');
    } catch (error) {
      return '';
    }
  }

  /// Small values lose what lies behind the sixth place, and look like none at all.
  function placesNote() {
    const lost = search.measured.some((place) => search.objectives[place].name.includes('Unavailability') &&
        search.designs.some((design) => design.values[place] === 0));
    return lost ? make('p', {class: 'hint'},
        'Values are saved with six places behind the point: a 0 may stand for ' +
        'a value below 0.0000005.') : '';
  }

  function sortingOf(route, columns) {
    const [first] = search.measured;
    const best = first !== undefined && search.objectives[first].maximise ? 'descending' : 'ascending';
    const key = columns.some((column) => column.key === firstSort[0]) ? firstSort[0] :
      (first === undefined ? 'number' : 'o' + first);
    const sorting = VelTarn.sorting(route.choices, key, firstSort[1] || best);
    return columns.some((column) => column.key === sorting.key && column.value) ? sorting :
        {key: 'number', descending: false};
  }

  function renderOverview(space, route) {
    space.append(make('h1', {tabindex: '-1'}, VelTarn.heading), VelTarn.searchSummary(search));
    if (search.designs.length === 0) {
      space.append(make('p', {class: 'empty'}, 'The search has left no design.'));
      return;
    }
    const columns = columnsOf();
    const sorting = sortingOf(route, columns);
    const column = columns.find((entry) => entry.key === sorting.key);
    let shown = [];
    let rows = null;
    const {bar, show} = VelTarn.designToolbar(search, (designs) => {
      shown = VelTarn.sortBy(designs, column, sorting.descending);
      rows.show(shown);
    }, VelTarn.button('Save as CSV', () => VelTarn.saveCsv(VelTarn.fileName(search.model, 'designs'),
        exportRows(columns, shown)), 'csv'));
    space.append(make('h2', {}, 'Designs'), bar, VelTarn.keptNote(search));
    rows = new DesignRows(space, columns, 'Designs');
    rows.showHead(sorting);
    VelTarn.printWith(rows.paper(space), () => shown.map((design, index) => () => rows.makeRow(design, index)));
    space.append(VelTarn.kindLegend(search.designs), placesNote(), VelTarn.boundsNote(search));
    show();
  }

  // -- The page

  function menuEntries() {
    const choices = VelTarn.sharedChoices(search, VelTarn.currentRoute().choices);
    const entries = [['overview', [], 'Designs', choices]];
    if (search.measured.length > 0) entries.push(['plot', ['plot'], 'Plot', choices]);
    if (search.measured.length > 2) entries.push(['parallel', ['parallel'], 'All objectives', choices]);
    return entries;
  }

  const views = {
    overview: {render: renderOverview},
    plot: {render: (space, route) => VelTarn.renderPlot(space, route, search)},
    parallel: {render: (space, route) => VelTarn.renderParallel(space, route, search)},
    design: {render: (space, route) => VelTarn.renderDesign(space, route, search)},
    compare: {render: (space, route) => VelTarn.renderComparison(space, route, search)},
  };

  const WhyMissing = ' is missing or its name has changed. It lies beside this page as it was written: copy the ' +
      'whole folder of the results, or run the search again.';
  const WhyBroken = ' is there, but the browser cannot read it. Run the search again, or look at the ' +
      'XML file of the same name.';

  const VariableOf = {'.js': 'OptimisationResults', '-Model.js': 'OptimisationModel'};

  /// The text of a script beside the page, and whether there is one. Bytes are read one by one, whatever
  /// the browser takes the page for.
  async function readScript(address, ending) {
    const there = await VelTarn.loadScript(address + ending, 'windows-1252');
    const text = window[VariableOf[ending]];
    return {there, text: typeof text === 'string' ? VelTarn.decodeBytes(text) : null};
  }

  /// Reads the state under the name that the page gives, and under the page's own address when there is
  /// none: files that were renamed together still belong together.
  async function findState(name) {
    const address = encodeURIComponent(name);
    const state = await readScript(address, '.js');
    const own = window.location.pathname.replace(/^.*\//, '').replace(/\.html?$/i, '');
    if (state.there || own === address) return {address, ...state};
    const other = await readScript(own, '.js');
    return other.there ? {address: own, ...other} : {address, ...state};
  }

  /// The search, without what the second script has when that one cannot be taken apart.
  function readBoth(state, model, name, problems) {
    try {
      return VelTarn.readSearch(state, model, name + '.js');
    } catch (error) {
      problems.push(error.message);
    }
    return model === null ? null : VelTarn.readSearch(state, null, name + '.js');
  }

  async function prepare(stateFile) {
    const name = VelTarn.decodeBytes(stateFile).replace(/\.xml$/i, '');
    const state = await findState(name);
    if (state.text === null) return [name + '.js' + (state.there ? WhyBroken : WhyMissing)];
    const model = await readScript(state.address, '-Model.js');
    const problems = model.there && model.text === null ? [name + '-Model.js' + WhyBroken] : [];
    try {
      search = readBoth(state.text, model.text, name, problems);
    } catch (error) {
      return [error.message];
    }
    if (search === null) return problems;
    Object.assign(search, {name, address: state.address});
    window.changeTitle(VelTarn.heading + (search.model === '' ? '' : ': ' + search.model));
    return problems;
  }

  /// The results of the search whose state is in the file. The table is sorted by the column of the key
  /// first, by the first objective when it is empty.
  window.optimisationTransform = (stateFile, key, direction) => {
    firstSort = [key, direction];
    window.changeTitle(VelTarn.heading);
    VelTarn.start(stateFile, {prepare: () => prepare(stateFile), results: () => search, views,
      entries: menuEntries, home: 'Go to the table of all designs'});
  };
}());
