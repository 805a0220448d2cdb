// One top event: its figures, its cut sets by order, and the ways to its tree and its cut sets.
'use strict';

(function () {
  const make = VelTarn.make;
  const Tabs = [['', 'Summary'], ['drawing', 'Fault tree'], ['outline', 'Outline'],
    ['cutsets', 'Cut sets']];

  /// The title and the tabs that all views of one top event share. Throws when there is no such tree.
  VelTarn.treeHead = (space, route, active) => {
    const tree = VelTarn.findTree(route.path[1]);
    if (!tree) throw new Error('There is no top event with the number ' + route.path[1] + '.');
    space.append(
        make('p', {class: 'trail'}, make('a', {href: '#/'}, 'All top events')),
        make('h1', {tabindex: '-1'}, tree.name),
        make('nav', {'aria-label': 'Views of this top event'}, make('ul', {class: 'tabs'},
            ...Tabs.map(([name, title]) => make('li', {}, make('a', {
              'href': VelTarn.address(['tree', tree.id, name].filter((part) => part !== '')),
              'aria-current': name === active ? 'page' : null, 'data-focus': 'tab-' + title}, title))))));
    return tree;
  };

  function chartRow(entry, largest) {
    const bar = make('span', {'class': entry.pruned ? 'bar-fill pruned' : 'bar-fill',
      'aria-hidden': 'true'});
    bar.style.width = (largest > 0 ? entry.count / largest * 100 : 0).toFixed(1) + '%';
    return make('tr', {}, make('th', {scope: 'row'}, 'Order ' + entry.order),
        make('td', {class: 'figure'}, String(entry.count), entry.pruned ? ' pruned' : ''),
        make('td', {class: 'bar'}, bar));
  }

  function orderChart(tree) {
    if (tree.summary.length === 0) {
      return make('p', {class: 'empty'}, 'No cut sets were found for this top event.');
    }
    const largest = Math.max(...tree.summary.map((entry) => entry.count));
    const pruned = tree.summary.some((entry) => entry.pruned);
    return make('div', {},
        make('table', {class: 'chart'},
            make('caption', {}, 'Minimal cut sets by order'),
            make('thead', {class: 'off-screen'}, make('tr', {}, make('th', {scope: 'col'}, 'Order'),
                make('th', {scope: 'col'}, 'Cut sets'), make('td', {}))),
            make('tbody', {}, ...tree.summary.map((entry) => chartRow(entry, largest)))),
        pruned ? make('p', {class: 'hint'}, 'Orders marked as pruned lie beyond the limits of the run: ' +
            'their cut sets were counted and dropped.') : null);
  }

  function singlePoints(tree) {
    const fmea = VelTarn.fmea();
    if (!fmea) {
      return VelTarn.fmeaUnread() ? make('section', {}, make('h2', {}, 'Single point failures'),
          make('p', {}, 'They could not be read, because the failure modes could not; see above.')) : null;
    }
    const events = Array.from(fmea.events.values()).filter((event) =>
      event.effects.some((effect) => effect.id === tree.id && effect.direct));
    const content = events.length === 0 ?
        make('p', {}, 'No single event leads to this top event.') :
        make('ul', {class: 'plain'}, ...events.map((event) => make('li', {}, VelTarn.eventLink(event.id),
            make('span', {class: 'description'}, event.description))));
    return make('section', {}, make('h2', {}, 'Single point failures (' + events.length + ')'), content);
  }

  function render(space, route) {
    const tree = VelTarn.treeHead(space, route, '');
    space.append(
        tree.description ? make('p', {class: 'lead'}, tree.description) : '',
        VelTarn.figureList([['Unavailability', tree.unavailability], ['Frequency', tree.frequency],
          ['Severity', tree.severity], ['SIL', tree.sil], ['Cut sets', String(tree.cutSetCount)]]),
        make('div', {class: 'columns'},
            make('section', {}, make('h2', {}, 'Cut sets'), orderChart(tree)),
            singlePoints(tree) || ''));
  }

  /// A link to where an event is explained. Events that the failure modes do not list have no place.
  VelTarn.eventLink = (id) => {
    const event = VelTarn.findEvent(id);
    if (!event) return make('span', {}, VelTarn.eventName(id));
    return make('a', {href: VelTarn.address(['fmea'], {event: id})}, ...VelTarn.breakable(event.name));
  };

  VelTarn.treeLink = (id, name) => (VelTarn.findTree(id) ?
      make('a', {href: VelTarn.address(['tree', id])}, ...VelTarn.breakable(name)) : make('span', {}, name));

  VelTarn.views.tree = {render};
}());
