// The fault tree of one top event: as a drawing and as an outline.
'use strict';

(function () {
  const make = VelTarn.make;

  /// What the types of the result format are called on the page, and the symbol they are drawn with.
  VelTarn.nodeTypes = {
    And: {text: 'AND gate', symbol: 'and'},
    Or: {text: 'OR gate', symbol: 'or'},
    Not: {text: 'NOT gate', symbol: 'not'},
    OutputDeviation: {text: 'Output deviation', symbol: 'none'},
    InputDeviation: {text: 'Input deviation', symbol: 'none'},
    ExportedDeviation: {text: 'Exported deviation', symbol: 'none'},
    Goto: {text: 'Failure in another place', symbol: 'none'},
    TopEvent: {text: 'Top event', symbol: 'none'},
    PCCF: {text: 'Potential common cause', symbol: 'none'},
    BasicEvent: {text: 'Basic event', symbol: 'circle'},
    NormalEvent: {text: 'Normal event', symbol: 'house'},
    ComplementEvent: {text: 'Event that does not happen', symbol: 'circle'},
    CCF: {text: 'Common cause failure', symbol: 'ring'},
    Circle: {text: 'Cut loop', symbol: 'diamond'},
    Event: {text: 'Event', symbol: 'circle'},
    Top: {text: 'Gate without a symbol here', symbol: 'none'},
  };

  const typeOf = (node) => VelTarn.nodeTypes[node.type] || {text: node.type, symbol: 'diamond'};

  /// The symbol of a node: repeats of a shared part are drawn as transfers to its first place.
  VelTarn.symbolOf = (node) => (node.shared ? 'transfer' : typeOf(node).symbol);

  VelTarn.typeText = (node) => (node.shared ? 'Transfer: ' : '') + typeOf(node).text;

  /// One line that says all about a node, for screen readers and titles.
  VelTarn.describeNode = (node) => {
    const count = node.children.length;
    return node.name + ', ' + typeOf(node).text + (node.shared ? ', shown elsewhere in this tree' : '') +
        (count > 0 ? ', ' + count + (count === 1 ? ' input' : ' inputs') : '');
  };

  function detailLinks(node, tree, select) {
    const links = [];
    if (node.event) {
      const component = node.event.component.name;
      links.push(make('a', {href: VelTarn.address(['fmea'], {event: node.id})}, 'Failure mode and effects'),
          make('a', {href: VelTarn.address(['tree', tree.id, 'cutsets'], {event: node.id})},
              'Cut sets with this event'),
          make('a', {href: VelTarn.address(['fmea'], {component})}, 'Component ',
              ...VelTarn.breakable(component)));
    }
    if (node.shared) {
      links.push(VelTarn.button('Go to where it is shown', () => select(node.shared), 'to-shared'));
    }
    return links;
  }

  const ListedInputs = 40;  // A gate with more is read in the tree itself.

  function neighbourList(title, nodes, select) {
    if (nodes.length === 0) return '';
    const left = nodes.length - ListedInputs;
    return make('section', {}, make('h3', {}, title), make('ul', {class: 'plain'},
        ...nodes.slice(0, ListedInputs).map((node) => make('li', {}, make('button',
            {'type': 'button', 'class': 'link-button', 'click': () => select(node)},
            ...VelTarn.breakable(node.name)))),
        left > 0 ? make('li', {}, 'and ' + left + ' more') : null));
  }

  /// What is known about the chosen node, with links to where more is.
  VelTarn.showNodeDetails = (panel, node, tree, select) => {
    const figures = node.event ? VelTarn.figureList([['Unavailability', node.event.unavailability],
      ['Frequency', node.event.frequency]]) : '';
    panel.replaceChildren(
        make('h2', {}, ...VelTarn.breakable(node.name)), make('p', {class: 'hint'}, typeOf(node).text +
            (node.shared ? ', a transfer to the same part elsewhere in this tree' : '')),
        node.event && node.event.description ? make('p', {}, node.event.description) : '', figures,
        make('ul', {class: 'plain links'},
            ...detailLinks(node, tree, select).map((link) => make('li', {}, link))),
        neighbourList('Input of', node.parent ? [node.parent] : [], select),
        neighbourList('Inputs', node.children, select));
  };

  function searchTools(state) {
    const result = make('span', {class: 'count', role: 'status'});
    const tell = () => {
      const found = state.found();
      const place = found.indexOf(state.chosen) + 1;
      const foundText = place > 0 ? place + ' of ' + found.length : found.length + ' found';
      result.textContent = state.searched.trim() === '' ? '' : (found.length === 0 ? 'not found' : foundText);
    };
    const go = (step) => {
      state.search(step);
      tell();
    };
    const field = VelTarn.filterField('Find a node', state.searched, 'find', (value) => {
      state.searched = value;
      go(0);
    });
    tell();
    field.addEventListener('keydown', (event) => {
      if (event.key === 'Enter') go(event.shiftKey ? -1 : 1);
    });
    return [field, VelTarn.button('Previous', () => go(-1), 'previous'),
      VelTarn.button('Next', () => go(1), 'next'), result];
  }

  const openTools = (state) => [VelTarn.button('Open all', () => state.setAllOpen(true), 'open-all'),
    VelTarn.button('Close all', () => state.setAllOpen(false), 'close-all')];

  /// What both forms need: the tools above, the place for the form, the details of the chosen node.
  function frame(space, route, active, kept) {
    const tree = VelTarn.treeHead(space, route, active);
    const root = VelTarn.logicOf(tree);
    if (!root) {
      space.append(make('p', {class: 'empty'}, 'This result holds no fault tree for this top event.'));
      return null;
    }
    const panel = make('aside', {'class': 'details', 'aria-label': 'Chosen node'});
    const state = new VelTarn.TreeState(tree, root, route.choices.node, () => {});
    if (kept) state.restore(kept);
    const tools = make('div', {class: 'toolbar'}, ...searchTools(state), ...openTools(state));
    const place = make('div', {class: 'tree-place'});
    space.append(tools, make('div', {class: 'tree-frame'}, place, panel));
    const choose = (node) => {
      state.choose(node);
      // The pressed entry is gone with what was shown of the node before.
      place.querySelector('[role="tree"]').focus({preventScroll: true});
    };
    const showDetails = () => VelTarn.showNodeDetails(panel, state.chosen, tree, choose);
    return {state, tools, place, showDetails};
  }

  // Sizes of the drawing, in its own units.
  const BoxWidth = 164;
  const BoxHeight = 56;
  const LineHeight = 16;
  const SymbolTop = BoxHeight + 8;
  const SymbolHeight = 32;
  const LevelHeight = 146;
  const Gap = 14;
  const Letters = 21;
  const TextLines = 3;
  const FirstScale = 0.8;  // No smaller, or the texts could not be read.
  const MaxScale = 3;
  const MinScale = 0.02;  // By hand; a very wide tree may fit at less.
  const SketchBelow = 0.28;  // The scale below which nobody could read a text.

  const SymbolPaths = {
    and: 'M-17,32V15A17,15 0 0 1 17,15V32Z',
    or: 'M-17,32C-17,15 -10,5 0,0C10,5 17,15 17,32Q0,22 -17,32Z',
    not: 'M0,8L15,32H-15ZM-4,4A4,4 0 1 1 4,4A4,4 0 1 1 -4,4Z',
    circle: 'M-16,16A16,16 0 1 1 16,16A16,16 0 1 1 -16,16Z',
    ring: 'M-16,16A16,16 0 1 1 16,16A16,16 0 1 1 -16,16ZM-11,16A11,11 0 1 1 11,16A11,11 0 1 1 -11,16Z',
    house: 'M-15,32V12L0,0L15,12V32Z',
    diamond: 'M0,0L18,16L0,32L-18,16Z',
    transfer: 'M0,0L17,32H-17Z',
  };

  // A saved drawing stands alone, on paper more often than not.
  const SavedStyle = 'text{font:13px sans-serif;fill:#1b2330;text-anchor:middle}' +
      '.figure-text{font-size:12px;fill:#4a5565}.edges{fill:none;stroke:#566072}' +
      '.box,.symbol,.badge{fill:#fff;stroke:#1b2330}.stem{stroke:#566072}';

  /// The text in lines, broken behind the signs that part names.
  function wrap(text) {
    const pieces = text.split(/(?<=[\s.:_\-])/);
    const lines = [''];
    for (let piece of pieces) {
      if ((lines[lines.length - 1] + piece).length > Letters && lines[lines.length - 1] !== '') lines.push('');
      while (piece.length > Letters) {
        lines[lines.length - 1] = piece.slice(0, Letters);
        piece = piece.slice(Letters);
        lines.push('');
      }
      lines[lines.length - 1] += piece;
    }
    if (lines.length <= TextLines) return lines;
    return [...lines.slice(0, TextLines - 1), lines[TextLines - 1].slice(0, Letters - 1) + '\u2026'];
  }

  /// Puts one subtree to the right of those before it, as near as their outlines allow, level by
  /// level. `edge` is the right outline so far; both outlines are relative to the parent.
  function pushAside(subtree, edge) {
    let shift = 0;
    subtree.left.forEach((left, level) => {
      if (level < edge.length) shift = Math.max(shift, edge[level] + BoxWidth + Gap - left);
    });
    subtree.spot.x = shift;
    subtree.right.forEach((right, level) => { edge[level] = right + shift; });
    return subtree.left.map((left) => left + shift);
  }

  /// The open part below a node, x relative to its parent, with its outline on both sides.
  function arrange(node, open, level, placed) {
    const spot = {node, x: 0, y: level * LevelHeight, children: []};
    placed.push(spot);
    const right = [];
    let left = [];
    if (open.has(node.key)) {
      for (const child of node.children) {
        const subtree = arrange(child, open, level + 1, placed);
        const moved = pushAside(subtree, right);
        left = left.concat(moved.slice(left.length));
        spot.children.push(subtree.spot);
      }
    }
    const count = spot.children.length;
    const middle = count === 0 ? 0 : (spot.children[0].x + spot.children[count - 1].x) / 2;
    spot.children.forEach((child) => { child.x -= middle; });
    return {spot, left: [0, ...left.map((x) => x - middle)], right: [0, ...right.map((x) => x - middle)]};
  }

  /// Places every open node: children side by side, each parent over the middle of its own.
  function layOut(root, open) {
    const placed = [];
    const whole = arrange(root, open, 0, placed);
    const start = (BoxWidth + Gap) / 2;
    whole.spot.x = start - Math.min(...whole.left);
    // Parents come before their children in the list, so each parent's place is final by then.
    placed.forEach((spot) => spot.children.forEach((child) => { child.x += spot.x; }));
    return {placed, width: whole.spot.x + Math.max(...whole.right) + start,
      height: whole.left.length * LevelHeight,
      spots: new Map(placed.map((spot) => [spot.node.key, spot]))};
  }

  function edgePath(spots, touches) {
    return spots.flatMap((spot) => spot.children
        .filter((child) => touches(Math.min(spot.x, child.x), Math.max(spot.x, child.x), spot.y, child.y))
        .map((child) => {
          const start = spot.y + (VelTarn.symbolOf(spot.node) === 'none' ? BoxHeight : SymbolTop + SymbolHeight);
          return 'M' + spot.x + ',' + (start - 5) + 'V' + (child.y - 18) + 'H' + child.x + 'V' + child.y;
        })).join('');
  }

  function badge(node, isOpen) {
    const y = VelTarn.symbolOf(node) === 'none' ? BoxHeight + 12 : SymbolTop + SymbolHeight + 12;
    return VelTarn.makeSvg('g', {'class': 'toggle', 'data-toggle': node.key},
        VelTarn.makeSvg('circle', {class: 'badge', cx: 0, cy: y, r: 9}),
        VelTarn.makeSvg('text', {x: 0, y: y + 4}, isOpen ? '\u2212' : '+'));
  }

  function symbolParts(node) {
    const symbol = VelTarn.symbolOf(node);
    if (symbol === 'none') return [];
    const parts = [VelTarn.makeSvg('path', {class: 'stem', d: 'M0,' + BoxHeight + 'V' + SymbolTop}),
      VelTarn.makeSvg('path', {'class': 'symbol ' + symbol, 'd': SymbolPaths[symbol],
        'transform': 'translate(0,' + SymbolTop + ')'})];
    if (node.type === 'ComplementEvent') {
      parts.push(VelTarn.makeSvg('text', {x: 0, y: SymbolTop + 20}, '\u00ac'));
    }
    return parts;
  }

  function figureBelow(node) {
    if (!node.event || !node.event.unavailability.text) return '';
    return VelTarn.makeSvg('text', {class: 'figure-text', x: 0, y: SymbolTop + SymbolHeight + 14},
        'Q = ' + node.event.unavailability.text);
  }

  function drawNode(spot, isOpen) {
    const {node} = spot;
    const lines = wrap(node.name);
    const top = BoxHeight / 2 + 4.5 - (lines.length - 1) * LineHeight / 2;
    return VelTarn.makeSvg('g', {'class': 'node', 'data-node': node.key,
      'transform': 'translate(' + spot.x + ',' + spot.y + ')'},
    // The title is also the name that screen readers tell.
    VelTarn.makeSvg('title', {}, VelTarn.describeNode(node)),
    VelTarn.makeSvg('rect', {class: 'box', x: -BoxWidth / 2, y: 0, width: BoxWidth, height: BoxHeight, rx: 3}),
    ...lines.map((line, index) => VelTarn.makeSvg('text', {x: 0, y: top + index * LineHeight}, line)),
    ...symbolParts(node), figureBelow(node),
    node.children.length > 0 ? badge(node, isOpen) : '');
  }

  /// A drawing that pans and zooms. Only nodes in view exist, and none but the chosen one while the
  /// scale is too small to read: one path then stands for all boxes.
  VelTarn.TreeDrawing = class {
    constructor(place, state) {
      this.state = state;
      this.scale = 1;
      this.x = 0;
      this.y = 0;
      this.made = new Map();
      this.edges = VelTarn.makeSvg('path', {class: 'edges'});
      this.sketch = VelTarn.makeSvg('path', {class: 'box sketch'});
      this.layer = VelTarn.makeSvg('g', {'role': 'presentation'}, this.edges, this.sketch);
      this.svg = VelTarn.makeSvg('svg', {'role': 'presentation', 'focusable': 'false'}, this.layer);
      this.box = make('div', {'class': 'drawing', 'role': 'tree', 'tabindex': '0', 'data-focus': 'drawing',
        'aria-label': 'Fault tree of ' + state.tree.name, 'keydown': (event) => this.onKey(event),
        'wheel': (event) => this.onWheel(event), 'dblclick': (event) => this.onDoubleClick(event)}, this.svg);
      place.append(this.box);
      this.listenToPointers();
      const observer = new ResizeObserver(() => this.draw());
      observer.observe(this.box);
      VelTarn.whenLeft(() => observer.disconnect());
    }

    /// The window on the drawing, for the way back.
    place() {
      const {x, y, scale} = this;
      return {x, y, scale};
    }

    start(kept) {
      const {root} = this.state;
      if (kept) {
        this.layout = layOut(root, this.state.open);
        Object.assign(this, {x: kept.x, y: kept.y, scale: kept.scale});
        this.draw();
        return;
      }
      const {clientWidth: width, clientHeight: height} = this.box;
      this.state.openAtFirst((open) => {
        const layout = layOut(root, open);
        return layout.width * FirstScale <= width && layout.height * FirstScale <= height;
      });
      this.layout = layOut(root, this.state.open);
      this.fit(FirstScale);
      this.reveal();
      this.draw();
    }

    update() {
      const before = this.layout.spots.get(this.state.chosen.key);
      this.layout = layOut(this.state.root, this.state.open);
      const after = this.layout.spots.get(this.state.chosen.key);
      // What the reader works on stays where it is while the rest moves.
      if (before && after) this.x += (before.x - after.x) * this.scale;
      this.clear();
      this.reveal();
      this.draw();
    }

    /// All of it in view, but no smaller than the least scale: then its top, or what is chosen.
    fit(least = 0) {
      const {clientWidth: width, clientHeight: height} = this.box;
      this.scale = Math.max(least, Math.min(1, (width - 24) / this.layout.width, (height - 24) / this.layout.height));
      const top = this.layout.spots.get(this.state.root.key);
      const whole = this.layout.width * this.scale <= width;
      this.x = width / 2 - (whole ? this.layout.width / 2 : top.x) * this.scale;
      this.y = 12;
      this.draw();
    }

    zoomBy(factor, x = this.box.clientWidth / 2, y = this.box.clientHeight / 2) {
      const scale = Math.min(MaxScale, Math.max(Math.min(MinScale, this.scale), this.scale * factor));
      this.x = x - (x - this.x) * scale / this.scale;
      this.y = y - (y - this.y) * scale / this.scale;
      this.scale = scale;
      this.draw();
    }

    /// Moves the chosen node into the window if it is outside.
    reveal() {
      const spot = this.layout.spots.get(this.state.chosen.key);
      const half = (BoxWidth / 2 + 8) * this.scale;
      const x = spot.x * this.scale + this.x;
      const y = spot.y * this.scale + this.y;
      this.x += Math.max(0, half - x) - Math.max(0, x - (this.box.clientWidth - half));
      this.y += Math.max(0, 8 - y) -
          Math.max(0, y - (this.box.clientHeight - LevelHeight * this.scale));
    }

    clear() {
      this.made.forEach((element) => element.remove());
      this.made.clear();
    }

    /// A test for boxes that touch the window.
    inView() {
      const left = -this.x / this.scale - BoxWidth / 2;
      const right = (this.box.clientWidth - this.x) / this.scale + BoxWidth / 2;
      const top = -this.y / this.scale - LevelHeight;
      const bottom = (this.box.clientHeight - this.y) / this.scale + LevelHeight;
      return (x1, x2, y1, y2) => x2 >= left && x1 <= right && y2 >= top && y1 <= bottom;
    }

    draw() {
      if (!this.layout) return;
      this.layer.setAttribute('transform',
          'translate(' + this.x + ',' + this.y + ') scale(' + this.scale + ')');
      VelTarn.placeChanged();
      const touches = this.inView();
      const {chosen} = this.state;
      const spots = this.layout.placed.filter((spot) => touches(spot.x, spot.x, spot.y, spot.y));
      const sketched = this.scale < SketchBelow;
      const wanted = new Set((sketched ? [] : spots).map((spot) => spot.node.key).concat(chosen.key));
      for (const [key, element] of this.made) {
        if (wanted.has(key)) continue;
        element.remove();
        this.made.delete(key);
      }
      wanted.forEach((key) => this.make(this.layout.spots.get(key)));
      this.edges.setAttribute('d', edgePath(this.layout.placed, touches));
      this.sketch.setAttribute('d', sketched ? spots.map((spot) => 'M' + (spot.x - BoxWidth / 2) + ',' +
          spot.y + 'h' + BoxWidth + 'v' + BoxHeight + 'h-' + BoxWidth + 'z').join('') : '');
      this.markChosen();
    }

    make(spot) {
      const {node} = spot;
      if (this.made.has(node.key)) return;
      const element = drawNode(spot, this.state.open.has(node.key));
      element.id = 'node-' + node.key;
      element.setAttribute('role', 'treeitem');
      if (node.children.length > 0) element.setAttribute('aria-expanded', String(this.state.open.has(node.key)));
      element.setAttribute('aria-level', String(spot.y / LevelHeight + 1));
      this.layer.append(element);
      this.made.set(node.key, element);
    }

    markChosen() {
      for (const [key, element] of this.made) {
        const isChosen = key === this.state.chosen.key;
        element.classList.toggle('chosen', isChosen);
        element.setAttribute('aria-selected', String(isChosen));
      }
      this.box.setAttribute('aria-activedescendant', 'node-' + this.state.chosen.key);
    }

    onKey(event) {
      if (event.ctrlKey || event.altKey || event.metaKey) return;
      const {chosen} = this.state;
      const neighbours = chosen.parent ? chosen.parent.children : [chosen];
      const beside = (step) => neighbours[neighbours.indexOf(chosen) + step];
      const choose = (node) => node && this.state.choose(node);
      const actions = {
        ArrowUp: () => choose(chosen.parent),
        ArrowDown: () => choose(chosen.children[0]),
        ArrowLeft: () => choose(beside(-1)),
        ArrowRight: () => choose(beside(1)),
        Home: () => choose(this.state.root),
        Enter: () => choose(chosen.shared),
        ' ': () => this.state.setOpen(chosen, !this.state.open.has(chosen.key)),
        '+': () => this.zoomBy(1.25),
        '-': () => this.zoomBy(0.8),
        '0': () => this.fit(),
      };
      if (!actions[event.key]) return;
      event.preventDefault();
      actions[event.key]();
    }

    /// The wheel zooms once the drawing is in use; before that it scrolls the page as anywhere else.
    onWheel(event) {
      if (!event.ctrlKey && document.activeElement !== this.box) return;
      event.preventDefault();
      const frame = this.box.getBoundingClientRect();
      this.zoomBy(Math.exp(-event.deltaY / 400), event.clientX - frame.left, event.clientY - frame.top);
    }

    nodeAt(event) {
      const element = event.target.closest('[data-node]');
      return element ? this.layout.spots.get(element.dataset.node).node : null;
    }

    onDoubleClick(event) {
      const node = this.nodeAt(event);
      if (node && !event.target.closest('[data-toggle]')) this.state.setOpen(node, !this.state.open.has(node.key));
    }

    onTap(event) {
      const node = this.nodeAt(event);
      if (!node) return;
      this.box.focus({preventScroll: true});
      if (event.target.closest('[data-toggle]')) this.state.setOpen(node, !this.state.open.has(node.key));
      else this.state.choose(node);
    }

    /// One pointer pans, two zoom about the point between them, one that hardly moves is a click.
    listenToPointers() {
      const pointers = new Map();
      let travelled = 0;
      const spread = () => {
        const [first, second] = Array.from(pointers.values());
        return Math.hypot(first.x - second.x, first.y - second.y);
      };
      this.box.addEventListener('pointerdown', (event) => {
        if (pointers.size === 0) travelled = 0;
        pointers.set(event.pointerId, {x: event.clientX, y: event.clientY});
      });
      this.box.addEventListener('pointermove', (event) => {
        const last = pointers.get(event.pointerId);
        if (!last) return;
        const before = pointers.size > 1 ? spread() : 0;
        const move = {x: event.clientX - last.x, y: event.clientY - last.y};
        pointers.set(event.pointerId, {x: event.clientX, y: event.clientY});
        travelled += Math.abs(move.x) + Math.abs(move.y);
        if (travelled < 5) return;
        this.box.setPointerCapture(event.pointerId);
        this.x += move.x / pointers.size;
        this.y += move.y / pointers.size;
        if (before > 0) this.zoomBy(spread() / before);
        else this.draw();
      });
      const end = (event) => {
        if (event.type === 'pointerup' && pointers.has(event.pointerId) && travelled < 5) this.onTap(event);
        pointers.delete(event.pointerId);
      };
      this.box.addEventListener('pointerup', end);
      this.box.addEventListener('pointercancel', end);
    }

    /// All open nodes, in view or not, as a picture of its own.
    toSvg() {
      const {placed, width, height} = this.layout;
      return VelTarn.makeSvg('svg', {width, height, viewBox: '0 0 ' + width + ' ' + height},
          VelTarn.makeSvg('title', {}, 'Fault tree of ' + this.state.tree.name),
          VelTarn.makeSvg('style', {}, SavedStyle),
          VelTarn.makeSvg('path', {class: 'edges', d: edgePath(placed, () => true)}),
          ...placed.map((spot) => drawNode(spot, this.state.open.has(spot.node.key))));
    }
  };

  const Hint = 'Gates with an order in time and exclusive gates have no symbol of their own in these ' +
      'results: their inputs stand directly under the gate above.';

  /// The symbols with what they stand for.
  function legend() {
    const entries = [['and', 'AND gate'], ['or', 'OR gate'], ['not', 'NOT gate'], ['circle', 'Event'],
      ['house', 'Normal event'], ['ring', 'Common cause failure'], ['diamond', 'Loop, cut here'],
      ['transfer', 'Transfer: drawn elsewhere in this tree']];
    return make('details', {class: 'legend'}, make('summary', {'data-focus': 'legend'}, 'Symbols'),
        make('ul', {}, ...entries.map(([symbol, text]) => make('li', {},
            VelTarn.makeSvg('svg', {'viewBox': '-22 -4 44 40', 'aria-hidden': 'true'},
                VelTarn.makeSvg('path', {d: SymbolPaths[symbol]})), text))));
  }

  VelTarn.views.drawing = {
    render(space, route, kept) {
      const parts = frame(space, route, 'drawing', kept);
      if (!parts) return;
      const {state, tools, place, showDetails} = parts;
      const drawing = new VelTarn.TreeDrawing(place, state);
      state.changed = () => {
        drawing.update();
        showDetails();
      };
      const name = VelTarn.fileName(VelTarn.results('FaultTrees').model, state.tree.name, 'fault-tree');
      tools.append(VelTarn.button('Fit', () => drawing.fit(), 'fit'),
          VelTarn.button('Zoom in', () => drawing.zoomBy(1.25), 'zoom-in'),
          VelTarn.button('Zoom out', () => drawing.zoomBy(0.8), 'zoom-out'),
          VelTarn.button('Save as SVG', () => VelTarn.saveFile(name + '.svg', 'image/svg+xml',
              new XMLSerializer().serializeToString(drawing.toSvg())), 'svg'));
      space.append(legend(), make('p', {class: 'hint'}, 'Keys: arrows move, Space opens and closes, plus and ' +
          'minus zoom, 0 fits, Enter goes from a transfer to its target. ' + Hint));
      VelTarn.printWith(space, () => [() => drawing.toSvg()]);
      showDetails();
      drawing.start(kept);
      VelTarn.tellPlace = () => ({...state.place(), ...drawing.place()});
    },
  };

  VelTarn.views.outline = {
    render(space, route, kept) {
      const parts = frame(space, route, 'outline', kept);
      if (!parts) return;
      const {state, place, showDetails} = parts;
      const outline = new VelTarn.Outline(place, state);
      state.changed = () => {
        outline.update();
        showDetails();
        VelTarn.placeChanged();
      };
      space.append(make('p', {class: 'hint'}, Hint));
      VelTarn.printWith(space, () => outline.printedLines());
      showDetails();
      outline.start(kept);
      VelTarn.tellPlace = () => ({...state.place(), top: outline.box.scrollTop});
    },
  };
}());
