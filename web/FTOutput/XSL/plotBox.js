// What all plots of designs share: scales, marks, and a box whose points are reached by pointer and keyboard.
//
// There may be thousands of points, so each kind of design is one path, and only the chosen design has an
// element of its own.
'use strict';

(function () {
  const make = VelTarn.make;
  const makeSvg = VelTarn.makeSvg;

  // -- Scales

  const tickText = (value) => {
    if (value === 0) return '0';
    const size = Math.abs(value);
    const rounded = Number(value.toPrecision(6));
    return size < 1e-4 || size >= 1e6 ? rounded.toExponential() : String(rounded);
  };

  /// About five round values between the two.
  function linearTicks(low, high) {
    const rough = (high - low) / 5;
    const decade = 10 ** Math.floor(Math.log10(rough));
    const step = decade * [1, 2, 5, 10].find((factor) => decade * factor >= rough);
    const first = Math.ceil(low / step - 1e-9);
    return Array.from({length: Math.floor(high / step + 1e-9) - first + 1}, (_, index) => (first + index) * step);
  }

  /// Powers of ten between the two exponents, parts of them where these are few.
  function logTicks(low, high) {
    const exponents = [];
    for (let exponent = Math.floor(low); exponent <= high; ++exponent) exponents.push(exponent);
    const inside = (value) => Math.log10(value) >= low && Math.log10(value) <= high;
    const decades = exponents.map((exponent) => 10 ** exponent).filter(inside);
    if (decades.length < 3) return exponents.flatMap((exponent) =>
        [1, 2, 5].map((part) => part * 10 ** exponent)).filter(inside);
    const every = Math.ceil(decades.length / 7);
    return decades.filter((_, index) => index % every === 0);
  }

  const ZeroRoom = 0.08;  // Of a logarithmic axis, for the zeros that have no place on it.

  function logScale(positive, zeros) {
    const exponents = positive.map((value) => Math.log10(value));
    const [least, most] = [exponents.reduce((a, b) => Math.min(a, b)), exponents.reduce((a, b) => Math.max(a, b))];
    const room = (most - least) * 0.04;
    const [low, high] = [least - room, most + room];
    const start = zeros ? ZeroRoom : 0;
    const at = (value) => (value <= 0 ? 0 : start + (1 - start) * (Math.log10(value) - low) / (high - low));
    return {at, ticks: [...(zeros ? [0] : []), ...logTicks(low, high)]};
  }

  function linearScale(values) {
    const [least, most] = [values.reduce((a, b) => Math.min(a, b)), values.reduce((a, b) => Math.max(a, b))];
    const room = most > least ? (most - least) * 0.04 : Math.abs(most) * 0.1 || 1;
    const [low, high] = [least >= 0 ? Math.max(0, least - room) : least - room, most + room];
    return {at: (value) => (value - low) / (high - low), ticks: linearTicks(low, high)};
  }

  /// A scale from values to parts of an axis, {at, ticks: [{at, text}], canLog, isLog}. A logarithmic one is
  /// possible where values span a decade, and chosen for two unless `log` is '0' or '1'.
  VelTarn.axisScale = (values, log) => {
    const finite = values.filter(Number.isFinite);
    if (finite.length === 0) return {at: () => NaN, ticks: [], canLog: false, isLog: false};
    const positive = finite.filter((value) => value > 0);
    const most = positive.reduce((a, b) => Math.max(a, b), 0);
    const span = positive.length > 0 ? most / positive.reduce((a, b) => Math.min(a, b)) : 1;
    const canLog = span >= 10 && finite.every((value) => value >= 0);
    const isLog = canLog && (log === undefined ? span >= 100 : log === '1');
    const scale = isLog ? logScale(positive, positive.length < finite.length) : linearScale(finite);
    return {at: scale.at, ticks: scale.ticks.map((value) => ({at: scale.at(value), text: tickText(value)})),
        canLog, isLog};
  };

  /// Values with the bounds that lie so near that a plot should show them.
  VelTarn.withBounds = (values, {lower, upper}) => {
    const finite = values.filter(Number.isFinite);
    const low = finite.reduce((a, b) => Math.min(a, b), Infinity);
    const high = finite.reduce((a, b) => Math.max(a, b), -Infinity);
    const near = (bound) => bound >= low - (high - low) && bound <= high + (high - low);
    return [...finite, ...[lower, upper].filter(near)];
  };

  // -- Marks

  /// The path of each kind's mark at a place.
  const Marks = {
    front: (x, y) => 'M' + (x - 5) + ' ' + y + 'a5 5 0 1 0 10 0a5 5 0 1 0 -10 0',
    archive: (x, y) => 'M' + x + ' ' + (y - 7) + 'l6 7l-6 7l-6 -7Z',
    dominated: (x, y) => 'M' + (x - 3.5) + ' ' + (y - 3.5) + 'h7v7h-7Z',
    infeasible: (x, y) => 'M' + (x - 4.5) + ' ' + (y - 4.5) + 'l9 9m0 -9l-9 9',
  };

  VelTarn.markPath = (kind, x, y) => Marks[kind](x, y);

  /// The mark of a kind of designs in a line of text.
  VelTarn.designSymbol = (kind) => makeSvg('svg', {'width': 16, 'height': 16, 'viewBox': '-8 -8 16 16',
    'focusable': 'false'}, makeSvg('path', {d: Marks[kind](0, 0), class: 'mark mark-' + kind}));

  /// What the marks mean, with the number of designs of each kind.
  VelTarn.kindLegend = (designs, samples = VelTarn.designSymbol) =>
      make('ul', {'class': 'kind-legend', 'aria-label': 'Marks'},
      ...Object.keys(VelTarn.designKinds).flatMap((kind) => {
        const count = designs.filter((design) => design.kind === kind).length;
        return count === 0 ? [] : [make('li', {}, samples(kind),
            make('span', {}, VelTarn.kindText(kind, designs) + ' (' + count + ')'))];
      }));

  // -- The box

  const rounded = (value) => Math.round(value * 10) / 10;
  VelTarn.roundedPlace = rounded;

  /// A plot: axes that screen readers pass by, and over them a list of designs of which the arrow keys
  /// choose one. Kinds of plots derive from it and give
  ///   place(width) -> height: puts the designs, filling `axes` below them, `marks`, and `labels` above
  ///   outline(design): the path that is drawn around one
  ///   nearest(x, y): the design there, or null
  ///   order(key): the designs in the order in which the arrow key goes through them
  VelTarn.PlotBox = class {
    constructor(parent, label, events) {
      this.events = events;
      this.label = label;
      this.designs = [];
      this.chosen = null;
      this.axes = makeSvg('svg', {'aria-hidden': 'true', 'focusable': 'false', 'class': 'plot-axes'});
      this.marks = makeSvg('g', {'aria-hidden': 'true'});
      this.hover = makeSvg('path', {'class': 'plot-hover', 'aria-hidden': 'true'});
      this.option = makeSvg('g', {'role': 'option', 'id': 'PlotOption', 'aria-selected': 'true'});
      this.svg = makeSvg('svg', {'role': 'presentation', 'focusable': 'false'}, this.marks, this.hover, this.option);
      this.box = make('div', {'class': 'plot-points', 'role': 'listbox', 'tabindex': '0', 'data-focus': 'plot',
        'keydown': (event) => this.onKey(event), 'click': (event) => this.onClick(event),
        'dblclick': () => this.chosen && this.events.open(this.chosen),
        'pointermove': (event) => this.onMove(event), 'pointerleave': () => this.showHover(null)}, this.svg);
      this.labels = makeSvg('svg', {'aria-hidden': 'true', 'focusable': 'false', 'class': 'plot-labels'});
      this.frame = make('div', {class: 'plot'}, this.axes, this.box, this.labels);
      this.reading = make('p', {'class': 'plot-reading', 'aria-hidden': 'true'});
      parent.append(this.frame, this.reading);
      const observer = new ResizeObserver(() => this.draw(false));
      observer.observe(this.frame);
      VelTarn.whenLeft(() => observer.disconnect());
    }

    show(designs, chosen) {
      this.designs = designs;
      this.chosen = chosen;
      this.draw(true);
    }

    draw(always) {
      const width = this.frame.clientWidth;
      if (width === 0 || (width === this.width && !always)) return;
      this.width = width;
      this.marks.replaceChildren();
      this.axes.replaceChildren();
      this.labels.replaceChildren();
      const height = this.place(width);
      this.frame.style.height = height + 'px';
      for (const svg of [this.svg, this.axes, this.labels]) svg.setAttribute('viewBox', '0 0 ' + width + ' ' +
          height);
      this.showHover(null);
      this.showChosen();
    }

    /// One path for all designs of each kind; the important ones are drawn last and lie on top.
    addMarks(pathOf, name) {
      for (const kind of ['dominated', 'infeasible', 'archive', 'front']) {
        const paths = new Set(this.designs.filter((design) => design.kind === kind).map(pathOf));
        if (paths.size > 0) this.marks.append(makeSvg('path',
            {'d': Array.from(paths).join(''), 'class': name + ' ' + name + '-' + kind}));
      }
    }

    /// The drawing as a file of its own: colours and fonts of the page go along, and the texts give the
    /// axes their names.
    toSvg(texts) {
      const Styles = ['fill', 'stroke', 'stroke-width', 'stroke-dasharray', 'stroke-opacity', 'paint-order',
          'font-size', 'font-weight', 'font-family'];
      const height = parseFloat(this.frame.style.height);
      const top = texts.length * 22 + 8;
      const root = makeSvg('svg', {'xmlns': 'http://www.w3.org/2000/svg', 'width': this.width,
          'height': height + top,
        'viewBox': '0 ' + -top + ' ' + this.width + ' ' + (height + top)},
      makeSvg('rect', {x: 0, y: -top, width: this.width, height: height + top,
        fill: window.getComputedStyle(document.querySelector('.plot-column')).backgroundColor}));
      const {color, fontFamily} = window.getComputedStyle(this.frame);
      texts.forEach((text, index) => root.append(makeSvg('text', {'x': 12, 'y': 20 - top + index * 22, 'fill': color,
        'font-family': fontFamily, 'font-size': '14px', 'font-weight': '600'}, text)));
      for (const part of [...this.axes.children, ...this.marks.children, ...this.labels.children]) {
        const copy = part.cloneNode(true);
        const style = window.getComputedStyle(part);
        Styles.forEach((name) => copy.setAttribute(name, style.getPropertyValue(name)));
        copy.removeAttribute('class');
        root.append(copy);
      }
      return new XMLSerializer().serializeToString(root);
    }

    showChosen() {
      const {chosen} = this;
      this.box.setAttribute('aria-label', this.label + ', ' + VelTarn.countOf(this.designs.length, 'design'));
      if (!chosen) {
        this.box.removeAttribute('aria-activedescendant');
        this.option.remove();
        return;
      }
      this.svg.append(this.option);
      this.box.setAttribute('aria-activedescendant', 'PlotOption');
      this.option.setAttribute('aria-label', this.events.describe(chosen));
      this.option.setAttribute('aria-setsize', String(this.designs.length));
      this.option.setAttribute('aria-posinset', String(this.order('ArrowRight').indexOf(chosen) + 1));
      this.option.replaceChildren(makeSvg('path', {d: this.outline(chosen), class: 'plot-chosen-ground'}),
          makeSvg('path', {d: this.outline(chosen), class: 'plot-chosen'}));
    }

    choose(design) {
      this.chosen = design;
      this.showChosen();
      this.events.choose(design);
    }

    showHover(design) {
      this.hover.setAttribute('d', design ? this.outline(design) : '');
      this.reading.textContent = design ? this.events.describe(design) : '\u00a0';
    }

    /// The design under the pointer, in the units of the drawing.
    under(event) {
      const area = this.svg.getBoundingClientRect();
      return this.nearest(event.clientX - area.left, event.clientY - area.top);
    }

    onMove(event) {
      const design = this.under(event);
      this.box.classList.toggle('over-design', design !== null);
      this.showHover(design);
    }

    onClick(event) {
      const design = this.under(event);
      if (design) this.choose(design);
    }

    onKey(event) {
      if (event.ctrlKey || event.altKey || event.metaKey || !this.chosen) return;
      const {key} = event;
      if (key === 'Enter') {
        event.preventDefault();
        this.events.open(this.chosen);
        return;
      }
      const steps = {ArrowRight: 1, ArrowUp: 1, ArrowLeft: -1, ArrowDown: -1, PageDown: -10, PageUp: 10,
        Home: -Infinity, End: Infinity};
      if (!(key in steps)) return;
      event.preventDefault();
      const order = this.order(key);
      const next = order.indexOf(this.chosen) + steps[key];
      const design = order[Math.max(0, Math.min(order.length - 1, next))];
      if (design !== this.chosen) this.choose(design);
    }
  };

  /// A line with a text at its end.
  VelTarn.axisLine = (x1, y1, x2, y2, name) => makeSvg('line', {x1: rounded(x1), y1: rounded(y1), x2: rounded(x2),
      y2: rounded(y2), class: name});

  VelTarn.axisText = (text, x, y, anchor, name) =>
      makeSvg('text', {'x': rounded(x), 'y': rounded(y), 'text-anchor': anchor,
    'class': name || null}, text);
}());
