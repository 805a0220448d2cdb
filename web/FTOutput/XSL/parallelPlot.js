// Designs as lines over all of their objectives: an axis for each, side by side, or one below the other in
// narrow windows.
'use strict';

(function () {
  const make = VelTarn.make;
  const rounded = VelTarn.roundedPlace;

  const Narrow = 640;  // Pixels; below it the axes lie.
  const Reach = 14;  // Pixels from a line at which the pointer still means it.

  class ParallelPlot extends VelTarn.PlotBox {
    setAxes(search, by, log) {
      Object.assign(this, {search, by});
      this.scales = search.measured.map((place) => VelTarn.axisScale(VelTarn.withBounds(
          this.designs.map((design) => design.values[place]), search.objectives[place]), log));
    }

    /// Positions are counted along the axes, and from one axis to the next; where axes lie the two change
    /// places on the way to the page.
    place(width) {
      const {measured, objectives} = this.search;
      this.lying = width < Narrow;
      const names = measured.map((place) => objectives[place].name);
      const count = names.length;
      if (this.lying) {
        this.tops = names.map((name, index) => 60 + index * 110);
        this.start = 14;
        this.end = width - 14;
      } else {
        const labels = names.map((name) => Math.min(VelTarn.textWidth(name), (width - 20) / count - 14));
        const isBounded = ({lower, upper}) => !Number.isNaN(lower) || !Number.isNaN(upper);
        const [first, last] = [Math.max(isBounded(objectives[measured[0]]) ? 96 : 40, labels[0] / 2),
            Math.max(50, labels[count - 1] / 2)];
        this.tops = names.map((name, index) => 8 + first + (width - 16 - first - last) * index / (count - 1));
        this.start = 420;
        this.end = 64;
      }
      measured.forEach((place, index) => this.drawAxis(index, objectives[place], width));
      this.positions = new Map(this.designs.map((design) => [design, measured.map((place, index) =>
        rounded(this.start + (this.end - this.start) * this.scales[index].at(design.values[place])))]));
      this.addMarks((design) => this.outline(design), 'line');
      return this.lying ? 60 + (count - 1) * 110 + 40 : 450;
    }

    /// The point of the page at so much of an axis.
    at(along, index) {
      return this.lying ? [along, this.tops[index]] : [rounded(this.tops[index]), along];
    }

    drawAxis(index, objective, width) {
      const top = this.tops[index];
      const active = this.search.measured[index] === this.by ? ' active' : '';
      const line = (from, to, name) => {
        const [[x1, y1], [x2, y2]] = [this.at(from, index), this.at(to, index)];
        this.axes.append(VelTarn.axisLine(x1, y1, x2, y2, name));
      };
      line(this.start, this.end, 'axis' + active);
      this.drawTitle(index, objective, width, active);
      let lastEnd = -Infinity;
      for (const tick of this.scales[index].ticks) {
        const along = this.start + (this.end - this.start) * tick.at;
        if (this.lying) {
          const half = VelTarn.textWidth(tick.text) / 2;
          this.axes.append(VelTarn.axisLine(along, top - 4, along, top + 4, 'axis'));
          const x = Math.max(half, Math.min(width - half, along));
          if (x - half < lastEnd + 8) continue;
          lastEnd = x + half;
          this.labels.append(VelTarn.axisText(tick.text, x, top + 20, 'middle', null));
        } else {
          this.axes.append(VelTarn.axisLine(top - 4, along, top + 4, along, 'axis'));
          const last = index === this.tops.length - 1;
          this.labels.append(VelTarn.axisText(tick.text, last ? top - 8 : top + 8, along + 4.5,
              last ? 'end' : 'start', null));
        }
      }
      for (const [bound, text] of [[objective.lower, 'lower'], [objective.upper, 'upper']]) {
        const along = this.start + (this.end - this.start) * this.scales[index].at(bound);
        if (Number.isNaN(along) || (along - this.start) * (along - this.end) > 0) continue;
        this.drawBound(this.at(along, index), text + ' bound', width);
      }
    }

    drawBound([x, y], text, width) {
      const [left, top, anchor] = this.lying ? [x, y + 35, x < width / 2 ? 'start' : 'end'] :
          [x - 15, y + 4.5, 'end'];
      this.axes.append(this.lying ? VelTarn.axisLine(x, y - 12, x, y + 12, 'bound') : VelTarn.axisLine(x - 12, y,
          x + 12, y, 'bound'));
      this.labels.append(VelTarn.axisText(text, left, top, anchor, 'bound-text'));
    }

    /// The name of an axis, cut where the next one begins; the list of objectives has it in full.
    drawTitle(index, objective, width, active) {
      const room = this.lying ? width - 28 : (width - 20) / this.tops.length - 14;
      const cut = (text) => {
        let shown = text;
        while (shown.length > 4 && VelTarn.textWidth(shown) > room) shown = shown.slice(0, -2);
        return shown === text ? text : shown + '\u2026';
      };
      const goal = [objective.goal, this.scales[index].isLog ? 'logarithmic' : ''].filter((word) =>
          word !== '').join(', ');
      const top = this.tops[index];
      if (this.lying) {
        this.labels.append(VelTarn.axisText(cut(objective.name + (goal ? ', ' + goal.toLowerCase() : '')), 14,
            top - 26, 'start', 'axis-name' + active));
        return;
      }
      this.labels.append(VelTarn.axisText(cut(objective.name), top, 18, 'middle', 'axis-name' + active),
          VelTarn.axisText(cut(goal), top, 38, 'middle', 'axis-goal'));
    }

    /// A line through the axes; it skips those of which a design has no value.
    outline(design) {
      let path = '';
      this.positions.get(design).forEach((along, index) => {
        if (!Number.isFinite(along)) return;
        path += (path === '' ? 'M' : 'L') + this.at(along, index).join(' ');
      });
      return path;
    }

    nearest(x, y) {
      const [across, along] = this.lying ? [y, x] : [x, y];
      const right = this.tops.findIndex((top) => top >= across);
      if (right === -1 || this.tops.length < 2) return null;
      const from = Math.max(0, right - 1);
      const to = Math.max(1, right);
      const part = Math.max(0, (across - this.tops[from]) / (this.tops[to] - this.tops[from]));
      let best = null;
      let least = Reach;
      for (const [design, places] of this.positions) {
        const distance = Math.abs(places[from] + (places[to] - places[from]) * part - along);
        if (distance < least || (distance === least && design === this.chosen)) [best, least] = [design, distance];
      }
      return best;
    }

    order() {
      if (this.ordered !== this.designs) {
        this.ordered = this.designs;
        this.list = VelTarn.sortBy(this.designs, {value: (design) => design.values[this.by]}, false);
      }
      return this.list;
    }
  }

  const lineSample = (kind) => VelTarn.makeSvg('svg', {'width': 34, 'height': 12, 'viewBox': '0 0 34 12',
      'focusable': 'false'},
      VelTarn.makeSvg('path', {d: 'M1 6H33', class: 'line line-' + kind}));

  function toolbar(search, route, by, scales) {
    const go = (choices) => {
      window.location.hash = VelTarn.address(route.path, {...VelTarn.currentRoute().choices, ...choices});
    };
    const fields = make('div', {class: 'toolbar plot-fields'}, VelTarn.choiceField('Arrow keys go by',
        search.measured.map((place) => [String(place), search.objectives[place].name]), String(by), 'axis-by',
            (value) => go({by: value})));
    if (!scales.some((scale) => scale.canLog)) return fields;
    const log = make('input', {'type': 'checkbox', 'data-focus': 'log',
        'change': () => go({log: log.checked ? '1' : '0'})});
    log.checked = scales.some((scale) => scale.isLog);
    fields.append(make('label', {class: 'check'}, log, 'Logarithmic where values span decades'));
    return fields;
  }

  VelTarn.renderParallel = (space, route, search) => {
    space.append(make('h1', {tabindex: '-1'}, 'All objectives'));
    if (search.measured.length < 2) {
      space.append(make('p', {class: 'empty'}, 'There are fewer than two objectives to compare.'));
      return;
    }
    const by = search.measured.includes(Number(route.choices.by)) && route.choices.by ?
        Number(route.choices.by) : search.measured[0];
    const panel = make('aside', {'class': 'details', 'aria-label': 'The chosen design'});
    const column = make('div', {class: 'plot-column'});
    const legend = make('div');
    let plot = null;
    const twinsOf = (design) => plot.designs.filter((other) => other !== design && other.text === design.text);
    const tell = (design) => VelTarn.fillDesignPanel(panel, search, design, design ? twinsOf(design) : [],
        (twin) => plot.choose(twin));
    const fill = (designs) => {
      plot.designs = designs;
      plot.setAxes(search, by, route.choices.log);
      const wanted = search.byKey.get(VelTarn.currentRoute().choices.design);
      const chosen = designs.includes(wanted) ? wanted :
        plot.order().find((design) => design.kind === 'front') || designs[0] || null;
      plot.show(designs, chosen);
      legend.replaceChildren(VelTarn.kindLegend(designs, lineSample));
      tell(chosen);
    };
    const {bar, show} = VelTarn.designToolbar(search, fill);
    space.append(bar, VelTarn.keptNote(search), make('div', {class: 'plot-frame'}, column, panel));
    plot = new ParallelPlot(column, 'Designs by all objectives', {
      describe: (design) => VelTarn.describeDesign(search, design),
      open: (design) => { window.location.hash = VelTarn.address(['design', design.key]); },
      choose: (design) => {
        VelTarn.keepChoices({design: design.key});
        VelTarn.updateMenu();
        tell(design);
      },
    });
    column.append(legend);
    show();
    const fields = toolbar(search, route, by, plot.scales);
    fields.append(VelTarn.button('Save as SVG',
        () => VelTarn.saveFile(VelTarn.fileName(search.model, 'objectives') + '.svg',
        'image/svg+xml', plot.toSvg([])), 'svg'));
    space.insertBefore(fields, bar);
    space.append(make('p', {class: 'hint'},
        'Each line is a design and each axis an objective. Lines that cross between two axes are ' +
        'designs of which one is better here and the other there. Choose a line with the pointer or the arrow keys, ' +
        'and open it with Enter or a double click.'), VelTarn.boundsNote(search));
  };
}());
