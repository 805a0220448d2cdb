// Long lists and trees: sortable heads, rows that are made when they come into view, what of a tree is
// open, outlines.
'use strict';

(function () {
  /// The order of two values of a column; figures that are absent come last in both directions.
  VelTarn.compare = (left, right, descending) => {
    if (typeof left === 'number') {
      const leftless = Number.isNaN(left);
      const rightless = Number.isNaN(right);
      if (leftless || rightless) return leftless - rightless;
      if (left === right) return 0;
      return (left < right) === descending ? 1 : -1;
    }
    const order = left.localeCompare(right, 'en', {numeric: true, sensitivity: 'base'});
    return descending ? -order : order;
  };

  /// A stable sort by the value that the column gives.
  VelTarn.sortBy = (rows, column, descending) =>
    rows.slice().sort((left, right) =>
      VelTarn.compare(column.value(left), column.value(right), descending));

  /// What the address line says about sorting, or the default of the view.
  VelTarn.sorting = (choices, key, direction) => ({
    key: choices.sort || key,
    descending: (choices.dir || (choices.sort ? 'ascending' : direction)) === 'descending',
  });

  /// The address that sorts by a column: the other way round when it is sorted by it already, else
  /// largest first for figures.
  function sortAddress(column, sorting) {
    const route = VelTarn.currentRoute();
    const descending = sorting.key === column.key ? !sorting.descending : Boolean(column.numeric);
    return VelTarn.address(route.path, {...route.choices, sort: column.key,
      dir: descending ? 'descending' : 'ascending'});
  }

  /// The content of a column's head. The sort goes through the address line, so back undoes it.
  VelTarn.sortButton = (column, sorting) => {
    const active = sorting.key === column.key;
    const arrow = active ? (sorting.descending ? ' \u25bc' : ' \u25b2') : '';
    return VelTarn.make('button', {
      'type': 'button', 'class': active ? 'sort active' : 'sort', 'data-focus': 'sort-' + column.key,
      'click': () => { window.location.hash = sortAddress(column, sorting); },
    }, column.title, VelTarn.make('span', {'aria-hidden': 'true', 'class': 'arrow'}, arrow));
  };

  VelTarn.ariaSort = (column, sorting) => {
    if (sorting.key !== column.key) return 'none';
    return sorting.descending ? 'descending' : 'ascending';
  };

  /// The head row of a table with one sort button for each column.
  VelTarn.tableHead = (columns, sorting) =>
    VelTarn.make('thead', {role: 'rowgroup'}, VelTarn.make('tr', {role: 'row'},
        ...columns.map((column) => VelTarn.make('th', {
          'scope': 'col', 'role': 'columnheader', 'class': column.numeric ? 'figure' : null,
          'aria-sort': column.value ? VelTarn.ariaSort(column, sorting) : null,
        }, column.value ? VelTarn.sortButton(column, sorting) : column.title))));

  /// A labelled field that tells every change.
  VelTarn.filterField = (label, value, key, changed) => {
    const field = VelTarn.make('input', {'type': 'search', 'value': value || '', 'data-focus': key,
      'autocomplete': 'off', 'spellcheck': 'false', 'input': () => changed(field.value)});
    return VelTarn.make('label', {class: 'field'}, VelTarn.make('span', {}, label), field);
  };

  VelTarn.button = (label, click, key) => VelTarn.make('button',
      {'type': 'button', 'class': 'button', 'click': click, 'data-focus': key}, label);

  /// True when the text holds every word of the filter, in any order and case.
  VelTarn.matcher = (filter) => {
    const words = filter.toLowerCase().split(/\s+/).filter((word) => word !== '');
    return (text) => {
      const lower = text.toLowerCase();
      return words.every((word) => lower.includes(word));
    };
  };

  /// A long name as text that may break behind the signs that part it, and nowhere else while there
  /// is room.
  const namePieces = (name) => name.split(/(?<=[.:_-])(?![.:_-])/);

  VelTarn.breakable = (name) => namePieces(name)
      .flatMap((part, index) => (index === 0 ? [part] : [VelTarn.make('wbr'), part]));

  let pencil = null;
  const widths = new Map();

  /// Pixels that the text takes on the page. Names come again and again, so each is measured once.
  VelTarn.textWidth = (text) => {
    if (!pencil) {
      pencil = document.createElement('canvas').getContext('2d');
      const {fontSize, fontFamily} = window.getComputedStyle(document.body);
      pencil.font = fontSize + ' ' + fontFamily;
    }
    if (!widths.has(text)) widths.set(text, pencil.measureText(text).width);
    return widths.get(text);
  };

  /// The lines that a breakable name takes at most where there are so many pixels for each.
  VelTarn.lineCount = (name, room) => {
    if (VelTarn.textWidth(name) <= room) return 1;
    let lines = 1;
    let used = 0;
    for (const piece of namePieces(name).flatMap((part) => part.split(/(?<= )/))) {
      const width = VelTarn.textWidth(piece);
      if (used > 0 && used + width > room) {
        ++lines;
        used = 0;
      }
      // A piece that is longer than a line breaks anywhere; each line of it may waste one letter.
      const whole = Math.floor((used + width) / Math.max(24, room - 16));
      lines += whole;
      used = whole > 0 ? room / 2 : used + width;
    }
    return lines;
  };

  const Margin = 400;  // Pixels above and below the window in which rows exist already.

  /// The first index whose row ends below the position.
  function rowAt(tops, position) {
    let low = 0;
    let high = tops.length - 2;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (tops[middle + 1] > position) high = middle;
      else low = middle + 1;
    }
    return low;
  }

  /// A scrolling box of very many rows, of which only those in view exist. Rows may differ in height
  /// but `heightOf(row, width)` has to know it without making them. `makeRow(row, index)` gives the
  /// element; the box places it.
  VelTarn.RowBox = class {
    constructor(element, heightOf, makeRow) {
      this.element = element;
      this.heightOf = heightOf;
      this.makeRow = makeRow;
      this.canvas = VelTarn.make('div', {'class': 'row-canvas', 'role': 'presentation'});
      this.made = new Map();
      this.rows = [];
      element.append(this.canvas);
      element.addEventListener('scroll', () => this.update());
      this.observer = new ResizeObserver(() => this.measure());
      this.observer.observe(element);
      VelTarn.whenLeft(() => this.observer.disconnect());
    }

    show(rows) {
      this.rows = rows;
      this.width = 0;
      this.tops = null;
      this.element.scrollTop = 0;
      this.measure();
    }

    measure() {
      // Hidden, as on paper: the observer calls again when there is something to see.
      if (this.element.clientWidth === 0) return;
      if (this.width === this.element.clientWidth) {
        this.update();
        return;
      }
      this.width = this.element.clientWidth;
      this.tops = new Float64Array(this.rows.length + 1);
      this.rows.forEach((row, index) => {
        this.tops[index + 1] = this.tops[index] + this.heightOf(row, this.width);
      });
      this.canvas.style.height = this.tops[this.rows.length] + 'px';
      this.clear();
      this.update();
    }

    clear() {
      this.made.forEach((row) => row.remove());
      this.made.clear();
    }

    update() {
      if (this.rows.length === 0 || !this.tops) return;
      const top = this.element.scrollTop;
      const first = rowAt(this.tops, top - Margin);
      const last = rowAt(this.tops, top + this.element.clientHeight + Margin);
      for (const [index, row] of this.made) {
        if ((index < first || index > last) && !row.contains(document.activeElement)) {
          row.remove();
          this.made.delete(index);
        }
      }
      for (let index = first; index <= last; ++index) {
        if (!this.made.has(index)) this.place(index);
      }
    }

    place(index) {
      const row = this.makeRow(this.rows[index], index);
      row.style.top = this.tops[index] + 'px';
      row.style.height = (this.tops[index + 1] - this.tops[index]) + 'px';
      this.made.set(index, row);
      // Reading order is the order of the rows, whatever order scrolling made them in.
      let next = null;
      for (const [other, element] of this.made) {
        if (other > index && (next === null || other < next.index)) next = {index: other, element};
      }
      this.canvas.insertBefore(row, next ? next.element : null);
    }

    /// Brings a row into view and gives its element.
    reveal(index) {
      if (!this.tops) return null;
      const box = this.element;
      if (this.tops[index] < box.scrollTop) box.scrollTop = this.tops[index];
      const below = this.tops[index + 1] - box.clientHeight;
      if (below > box.scrollTop) box.scrollTop = below;
      this.update();
      return this.made.get(index);
    }
  };

  function allNodes(root) {
    const nodes = [];
    const walk = (node) => {
      nodes.push(node);
      node.children.forEach(walk);
    };
    walk(root);
    return nodes;
  }

  const MostTries = 60;  // Each try lays out what is open.

  /// The nodes that start open: level by level as long as it fits, then single nodes of the level that
  /// does not; but one level at least.
  function openWhile(root, fits) {
    let open = new Set([root.key]);
    let level = root.children;
    let tries = 0;
    while (level.length > 0) {
      const gates = level.filter((node) => node.children.length > 0);
      const all = new Set([...open, ...gates.map((node) => node.key)]);
      if (fits(all)) {
        open = all;
      } else {
        for (const node of gates) {
          if (++tries > MostTries) return open;
          const one = new Set([...open, node.key]);
          if (fits(one)) open = one;
        }
      }
      level = gates.filter((node) => open.has(node.key)).flatMap((node) => node.children);
    }
    return open;
  }

  function openWayTo(node, open) {
    for (let above = node.parent; above; above = above.parent) open.add(above.key);
  }

  function isBelow(node, top) {
    for (let above = node.parent; above; above = above.parent) {
      if (above === top) return true;
    }
    return false;
  }

  /// The state that drawing and outline share: what is open, what is chosen, what was searched.
  /// `changed(what)` is told after every change.
  VelTarn.TreeState = class {
    constructor(tree, root, chosenKey, changed) {
      this.tree = tree;
      this.root = root;
      this.nodes = allNodes(root);
      this.open = new Set();
      this.searched = '';
      this.chosen = this.nodes.find((node) => node.key === chosenKey) || root;
      this.changed = changed;
    }

    /// Opens what fits to begin with, and the way to the chosen node.
    openAtFirst(fits) {
      this.open = openWhile(this.root, fits);
      openWayTo(this.chosen, this.open);
    }

    /// What is open and searched, for the way back; the address has the chosen node.
    place() {
      return {open: Array.from(this.open), searched: this.searched};
    }

    restore({open, searched}) {
      this.open = new Set(open);
      this.searched = searched;
      openWayTo(this.chosen, this.open);
    }

    choose(node) {
      openWayTo(node, this.open);
      this.chosen = node;
      VelTarn.keepChoices({node: node.key});
      this.changed();
    }

    /// What is closed over the chosen node is chosen in its place.
    setOpen(node, isOpen) {
      if (node.children.length === 0) return;
      if (isOpen) {
        this.open.add(node.key);
      } else {
        this.open.delete(node.key);
        if (isBelow(this.chosen, node)) {
          this.choose(node);
          return;
        }
      }
      this.changed();
    }

    setAllOpen(isOpen) {
      const gates = this.nodes.filter((node) => node.children.length > 0);
      this.open = new Set(isOpen ? gates.map((node) => node.key) : [this.root.key]);
      if (!isOpen) openWayTo(this.chosen, this.open);
      this.changed();
    }

    /// The nodes whose text has all words of the search, in reading order.
    found() {
      const matches = VelTarn.matcher(this.searched);
      return this.searched.trim() === '' ? [] : this.nodes.filter((node) => matches(node.name));
    }

    /// Chooses the next node after the chosen one that is found, from the end on to the start again.
    search(step) {
      const found = this.found();
      if (found.length === 0) return;
      const at = Number(this.chosen.key);
      const ahead = step > 0 ? found.find((node) => Number(node.key) > at) :
        found.filter((node) => Number(node.key) < at).pop();
      const next = step === 0 && found.includes(this.chosen) ? this.chosen :
        ahead || (step < 0 ? found[found.length - 1] : found[0]);
      this.choose(next);
    }
  };

  /// The nodes of a tree in reading order, without what is closed.
  function openNodes(root, open) {
    const nodes = [];
    const walk = (node, level, position) => {
      nodes.push({node, level, position});
      if (open.has(node.key)) node.children.forEach((child, index) => walk(child, level + 1, index + 1));
    };
    walk(root, 1, 1);
    return nodes;
  }

  const FirstLines = 60;
  const TypeWidth = 0.86;  // Of a type's text: it is set smaller than the name.
  const indentOf = (row, width) => Math.min(row.level - 1, 12) * (width < 640 ? 12 : 24);

  /// A tree as indented lines that open and close; see VelTarn.TreeState for what it shows.
  VelTarn.Outline = class {
    constructor(place, state) {
      this.state = state;
      this.box = VelTarn.make('div', {'class': 'row-box outline', 'role': 'tree', 'tabindex': '0',
        'data-focus': 'outline', 'aria-label': 'Outline of ' + state.tree.name,
        'keydown': (event) => this.onKey(event)});
      place.append(this.box);
      this.rowBox = new VelTarn.RowBox(this.box, (row, width) => this.heightOf(row, width),
          (row) => this.makeRow(row));
    }

    start(kept) {
      const {root} = this.state;
      if (!kept) this.state.openAtFirst((open) => openNodes(root, open).length <= FirstLines);
      this.update();
      if (kept) this.box.scrollTop = kept.top;
    }

    update() {
      const {scrollTop} = this.box;
      this.rows = openNodes(this.state.root, this.state.open);
      this.rowBox.show(this.rows);
      this.box.scrollTop = scrollTop;
      this.rowBox.reveal(this.rows.findIndex((row) => row.node === this.state.chosen));
      this.box.setAttribute('aria-activedescendant', 'line-' + this.state.chosen.key);
    }

    /// The name in as many lines as it needs, and its type behind it or on a line of its own.
    heightOf(row, width) {
      const room = Math.max(80, width - indentOf(row, width) - 52);
      const lines = VelTarn.lineCount(row.node.name, room);
      const typeFits = VelTarn.textWidth(row.node.name) +
          VelTarn.textWidth(VelTarn.typeText(row.node)) * TypeWidth + 26 <= room;
      return (typeFits ? 1 : lines + 1) * 22 + 12;
    }

    makeRow(row) {
      const {node} = row;
      const isOpen = this.state.open.has(node.key);
      const line = VelTarn.make('div', {
        'class': node === this.state.chosen ? 'row line chosen' : 'row line', 'role': 'treeitem',
        'id': 'line-' + node.key, 'aria-level': row.level, 'aria-posinset': row.position,
        'aria-setsize': node.parent ? node.parent.children.length : 1,
        'aria-selected': String(node === this.state.chosen),
        'aria-expanded': node.children.length > 0 ? String(isOpen) : null,
        'click': (event) => this.onClick(event, node),
      }, VelTarn.make('span', {'class': 'toggle', 'aria-hidden': 'true'},
          node.children.length === 0 ? '' : (isOpen ? '\u2212' : '+')),
      VelTarn.make('span', {class: 'line-text'}, VelTarn.make('span', {}, ...VelTarn.breakable(node.name)),
          node.name === VelTarn.typeText(node) ? null :
            VelTarn.make('span', {class: 'tag'}, VelTarn.typeText(node))));
      line.style.paddingInlineStart = indentOf(row, this.box.clientWidth) + 8 + 'px';
      return line;
    }

    /// All open lines in the plain flow, for paper.
    printedLines() {
      return this.rows.map((row) => () => {
        const line = this.makeRow(row);
        line.removeAttribute('id');  // The one on the screen has it.
        return line;
      });
    }

    onClick(event, node) {
      this.box.focus({preventScroll: true});
      if (event.target.closest('.toggle')) this.state.setOpen(node, !this.state.open.has(node.key));
      else this.state.choose(node);
    }

    onKey(event) {
      const {chosen, open} = this.state;
      const at = this.rows.findIndex((row) => row.node === chosen);
      const choose = (row) => row && this.state.choose(row.node);
      const isOpen = open.has(chosen.key);
      const actions = {
        ArrowDown: () => choose(this.rows[at + 1]),
        ArrowUp: () => choose(this.rows[at - 1]),
        ArrowRight: () => (isOpen ? choose(this.rows[at + 1]) : this.state.setOpen(chosen, true)),
        ArrowLeft: () => (isOpen ? this.state.setOpen(chosen, false) :
          chosen.parent && this.state.choose(chosen.parent)),
        Home: () => choose(this.rows[0]),
        End: () => choose(this.rows[this.rows.length - 1]),
        Enter: () => chosen.shared && this.state.choose(chosen.shared),
        ' ': () => this.state.setOpen(chosen, !isOpen),
      };
      if (!actions[event.key] || event.ctrlKey || event.altKey || event.metaKey) return;
      event.preventDefault();
      actions[event.key]();
    }
  };
}());
