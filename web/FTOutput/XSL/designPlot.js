// Designs as points over two of their objectives, and the panel about the chosen one.
'use strict';

(function () {
  const make = VelTarn.make;
  const makeSvg = VelTarn.makeSvg;
  const rounded = VelTarn.roundedPlace;

  const Reach = 22;  // Pixels from a point at which the pointer still means it.

  class Scatter extends VelTarn.PlotBox {
    setAxes(search, x, y, logs) {
      Object.assign(this, {search, x, y, logs});
      const values = (place) => VelTarn.withBounds(this.designs.map((design) => design.values[place]),
          search.objectives[place]);
      this.scaleX = VelTarn.axisScale(values(x), logs[0]);
      this.scaleY = VelTarn.axisScale(values(y), logs[1]);
    }

    place(width) {
      const height = Math.max(300, Math.min(540, Math.round(width * 0.6)));
      const labels = this.scaleY.ticks.map((tick) => VelTarn.textWidth(tick.text));
      this.area = {left: Math.max(30, ...labels) + 14, right: width - 16, top: 12, bottom: height - 30};
      const {left, right, top, bottom} = this.area;
      this.toX = (value) => rounded(left + (right - left) * this.scaleX.at(value));
      this.toY = (value) => rounded(bottom - (bottom - top) * this.scaleY.at(value));
      this.positions = new Map(this.designs.map((design) =>
        [design, [this.toX(design.values[this.x]), this.toY(design.values[this.y])]]));
      this.drawAxes();
      this.drawBounds();
      this.drawFront();
      this.addMarks((design) => VelTarn.markPath(design.kind, ...this.positions.get(design)), 'mark');
      return height;
    }

    drawAxes() {
      const {left, right, top, bottom} = this.area;
      let lastEnd = -Infinity;
      for (const tick of this.scaleX.ticks) {
        const x = left + (right - left) * tick.at;
        const half = VelTarn.textWidth(tick.text) / 2;
        this.axes.append(VelTarn.axisLine(x, top, x, bottom, 'grid'));
        if (x - half < lastEnd + 8) continue;
        lastEnd = x + half;
        this.axes.append(VelTarn.axisText(tick.text, Math.min(x, right + 14 - half), bottom + 20, 'middle'));
      }
      for (const tick of this.scaleY.ticks) {
        const y = bottom - (bottom - top) * tick.at;
        this.axes.append(VelTarn.axisLine(left, y, right, y, 'grid'),
            VelTarn.axisText(tick.text, left - 8, y + 4.5, 'end'));
      }
      this.axes.append(VelTarn.axisLine(left, bottom, right, bottom, 'axis'),
          VelTarn.axisLine(left, top, left, bottom, 'axis'));
    }

    drawBounds() {
      const {left, right, top, bottom} = this.area;
      const draw = (place, toLine) => {
        const {lower, upper} = this.search.objectives[place];
        for (const [bound, text] of [[lower, 'lower bound '], [upper, 'upper bound ']]) {
          if (!Number.isNaN(bound)) toLine(bound, text + bound);
        }
      };
      draw(this.x, (bound, text) => {
        const x = this.toX(bound);
        if (!(x >= left && x <= right)) return;
        const before = x > (left + right) / 2;
        this.axes.append(VelTarn.axisLine(x, top, x, bottom, 'bound'));
        this.labels.append(VelTarn.axisText(text, before ? x - 6 : x + 6, top + 14, before ? 'end' : 'start',
            'bound-text'));
      });
      draw(this.y, (bound, text) => {
        const y = this.toY(bound);
        if (!(y >= top && y <= bottom)) return;
        this.axes.append(VelTarn.axisLine(left, y, right, y, 'bound'));
        this.labels.append(VelTarn.axisText(text, right - 6, y < top + 24 ? y + 16 : y - 6, 'end', 'bound-text'));
      });
    }

    /// The border of what the best designs leave behind: better in one of the two is worse in the other.
    drawFront() {
      if (this.x === this.y) return;
      const able = this.designs.filter((design) => design.feasible !== false);
      const front = VelTarn.undominated(able, [this.x, this.y], this.search.objectives);
      const steps = front.map((design) => this.positions.get(design));
      if (steps.length < 2) return;
      this.axes.append(makeSvg('path', {'class': 'front-line',
        'd': 'M' + steps[0].join(' ') + steps.slice(1).map(([x, y]) => 'H' + x + 'V' + y).join('')}));
    }

    outline(design) {
      const [x, y] = this.positions.get(design);
      return 'M' + (x - 11) + ' ' + y + 'a11 11 0 1 0 22 0a11 11 0 1 0 -22 0';
    }

    nearest(x, y) {
      let best = null;
      let least = Reach * Reach;
      for (const [design, [left, top]] of this.positions) {
        const distance = (left - x) ** 2 + (top - y) ** 2;
        if (distance < least || (distance === least && design === this.chosen)) [best, least] = [design, distance];
      }
      return best;
    }

    order(key) {
      const [first, second] = key === 'ArrowUp' || key === 'ArrowDown' ? [this.y, this.x] : [this.x, this.y];
      if (!this.orders) this.orders = new Map();
      if (this.ordered !== this.designs) {
        this.orders.clear();
        this.ordered = this.designs;
      }
      if (!this.orders.has(first)) {
        this.orders.set(first, this.designs.slice().sort((left, right) =>
          left.values[first] - right.values[first] || left.values[second] - right.values[second]));
      }
      return this.orders.get(first);
    }
  }

  // -- The panel beside a plot

  const ListedTwins = 12;

  const goalText = (objective) => (objective.goal === '' ? '' : ', ' + objective.goal.toLowerCase());

  VelTarn.objectiveText = (objective) => objective.name + goalText(objective);

  /// One line that says all about a point.
  VelTarn.describeDesign = (search, design) => 'Design ' + design.key + ': ' + search.measured.map((place) =>
    search.objectives[place].name + ' ' + (design.texts[place] || 'not given')).join(', ') + '. ' +
      VelTarn.kindText(design.kind, [design]) + '.';

  function twinList(twins, choose) {
    if (twins.length === 0) return '';
    return make('div', {}, make('h3', {}, VelTarn.countOf(twins.length, 'more design') + ' with these values'),
        make('ul', {class: 'plain'}, ...twins.slice(0, ListedTwins).map((twin) => make('li', {},
            make('button', {'type': 'button', 'class': 'link-button', 'click': () => choose(twin)},
                'Design ' + twin.key)))),
        twins.length > ListedTwins ? make('p', {class: 'hint'}, twins.length - ListedTwins +
            ' more of them are in the table.') : '');
  }

  /// Fills the panel with the chosen design.
  VelTarn.fillDesignPanel = (panel, search, design, twins, choose) => {
    if (!design) {
      panel.replaceChildren(make('p', {}, 'No design is left by the filter.'));
      return;
    }
    panel.replaceChildren(make('h2', {}, VelTarn.designSymbol(design.kind), ' Design ' + design.key),
        VelTarn.figureList(search.measured.map((place) => [search.objectives[place].name, design.texts[place]])),
        make('p', {}, VelTarn.placeText(design), '. ', 'Feasibility: ',
            VelTarn.feasibleText(design).toLowerCase(), '. ',
            VelTarn.brokenText(design)),
        make('p', {class: 'panel-links'}, VelTarn.designLink(design, 'Open design ' + design.key),
            VelTarn.compareLink(search, design)),
        twinList(twins, choose));
  };

  function axisField(label, search, route, name, place) {
    return VelTarn.choiceField(label, search.measured.map((other) => [String(other), search.objectives[other].name]),
        String(place), 'axis-' + name, (value) => {
          window.location.hash = VelTarn.address(route.path, {...VelTarn.currentRoute().choices, [name]: value,
              [name + 'log']: ''});
        });
  }

  function logField(label, route, name, scale) {
    const field = make('input', {'type': 'checkbox', 'data-focus': 'log-' + name, 'change': () => {
      window.location.hash = VelTarn.address(route.path,
          {...VelTarn.currentRoute().choices, [name + 'log']: field.checked ? '1' : '0'});
    }});
    field.checked = scale.isLog;
    return make('label', {class: 'check'}, field, label);
  }

  const axisTitle = (objective, arrow, scale) => make('p', {class: 'axis-title'},
      ...VelTarn.objectiveName(objective.name),
      goalText(objective) + (scale.isLog ? ', logarithmic ' : ' ') + arrow);

  /// The objective that the address names, or the given one.
  const placeOf = (search, text, otherwise) => (search.measured.includes(Number(text)) && text !== undefined ?
      Number(text) : otherwise);

  VelTarn.renderPlot = (space, route, search) => {
    space.append(make('h1', {tabindex: '-1'}, 'Plot of two objectives'));
    if (search.measured.length === 0) {
      space.append(make('p', {class: 'empty'}, 'The designs have no values.'));
      return;
    }
    const x = placeOf(search, route.choices.x, search.measured[0]);
    const y = placeOf(search, route.choices.y, search.measured.find((place) => place !== x) ?? x);
    const logs = [route.choices.xlog, route.choices.ylog];
    const panel = make('aside', {'class': 'details', 'aria-label': 'The chosen design'});
    const column = make('div', {class: 'plot-column'});
    let plot = null;
    const twinsOf = (design) => plot.designs.filter((other) => other !== design &&
        other.values[x] === design.values[x] && other.values[y] === design.values[y]);
    const tell = (design) => VelTarn.fillDesignPanel(panel, search, design, design ? twinsOf(design) : [],
        (twin) => plot.choose(twin));
    const legend = make('div');
    const titleY = make('div');
    const titleX = make('div', {class: 'title-x'});
    const fill = (left) => {
      const designs = left.filter((design) => Number.isFinite(design.values[x]) &&
          Number.isFinite(design.values[y]));
      plot.designs = designs;
      plot.setAxes(search, x, y, logs);
      const wanted = search.byKey.get(VelTarn.currentRoute().choices.design);
      const chosen = designs.includes(wanted) ? wanted :
        plot.order('ArrowRight').find((design) => design.kind === 'front') || designs[0] || null;
      titleY.replaceChildren(axisTitle(search.objectives[y], '\u2191', plot.scaleY));
      titleX.replaceChildren(axisTitle(search.objectives[x], '\u2192', plot.scaleX));
      plot.show(designs, chosen);
      legend.replaceChildren(VelTarn.kindLegend(designs));
      tell(chosen);
    };
    const {bar, show} = VelTarn.designToolbar(search, fill);
    const fields = make('div', {class: 'toolbar plot-fields'}, axisField('Across', search, route, 'x', x),
        axisField('Upwards', search, route, 'y', y));
    space.append(fields, bar, VelTarn.keptNote(search), make('div', {class: 'plot-frame'}, column, panel));
    column.append(titleY);
    plot = new Scatter(column, 'Designs by ' + search.objectives[x].name + ' and ' + search.objectives[y].name, {
      describe: (design) => VelTarn.describeDesign(search, design),
      open: (design) => { window.location.hash = VelTarn.address(['design', design.key]); },
      choose: (design) => {
        VelTarn.keepChoices({design: design.key});
        VelTarn.updateMenu();
        tell(design);
      },
    });
    column.insertBefore(titleX, plot.reading);
    column.append(legend);
    show();
    fields.append(VelTarn.button('Save as SVG', () => VelTarn.saveFile(VelTarn.fileName(search.model, 'plot') +
        '.svg', 'image/svg+xml',
        plot.toSvg([['Across: ', x], ['Upwards: ', y]].map(([text, place]) => text +
            VelTarn.objectiveText(search.objectives[place])))), 'svg'));
    for (const [name, label, scale] of [['x', 'Logarithmic across', plot.scaleX],
        ['y', 'Logarithmic upwards', plot.scaleY]]) {
      if (scale.canLog) fields.append(logField(label, route, name, scale));
    }
    space.append(make('p', {class: 'hint'},
        'Choose a point with the pointer or the arrow keys, and open it with Enter or a double ' +
        'click. The stepped line is the front of these two objectives. Designs that are left out by the filter, or lack a ' +
        'value, are not drawn.'), VelTarn.boundsNote(search));
  };
}());
