// The head of the page, and the way from the address line to a view.
//
// Every view enters itself in VelTarn.views under the last word of its address, with a title and a
// function that fills an element. What a view shows stands in the address line, so that back,
// forward and bookmarks work. Where the reader was in it is kept with each step of the way: the function
// is given what the view told of its place before, or null.
'use strict';

VelTarn.views = {};

(function () {
  let source = 'FaultTrees';
  let pageTitle = '';
  let heading = '';

  const make = VelTarn.make;

  function skipToContent(event) {
    // The address line belongs to the views: a jump target in it would leave the current one.
    event.preventDefault();
    const title = document.querySelector('main h1, [role="main"] h1');
    if (title) title.focus();
  }

  function menuEntries(results) {
    const entries = [['overview', [], 'Overview'], ['fmea', ['fmea'], 'Failure modes']];
    if (results.allocations.length > 0) {
      entries.push(['allocations', ['allocations'], 'Safety allocations']);
    }
    const count = results.warnings.length;
    entries.push(['warnings', ['warnings'], 'Warnings (' + count + ')']);
    return entries;
  }

  /// The pages of an analysis. Those of a search bring their own: where the results come from, which
  /// views there are, what the menu lists, and the way home.
  const analysis = {
    /// Gives what could not be read, a sentence each.
    prepare: async () => {
      await VelTarn.mendCharacterSet();
      return VelTarn.scriptProblems();
    },
    results: () => VelTarn.results(source),
    views: VelTarn.views,
    entries: menuEntries,
    home: 'Go to the overview of all top events',
  };

  let site = analysis;
  let menuLinks = new Map();

  function fillMenu(active, results) {
    const place = document.getElementById('MenuHeader');
    const entries = results ? site.entries(results) : [];
    menuLinks = new Map(entries.map(([name, path, title, choices]) => [name,
      make('a', {'href': VelTarn.address(path, choices), 'aria-current': name === active ? 'page' : null,
        'data-focus': 'menu-' + name}, title)]));
    const links = Array.from(menuLinks.values(), (link) => make('li', {}, link));
    place.setAttribute('role', 'banner');
    place.replaceChildren(
        make('a', {href: '#/', class: 'skip-link', click: skipToContent}, 'Skip to the content'),
        make('div', {class: 'brand'}, make('span', {class: 'product'}, 'Vel-Tarn'),
            make('span', {class: 'model'}, results && results.model ? results.model : heading)),
        make('nav', {'aria-label': 'Results'}, make('ul', {class: 'menu'}, ...links)));
  }

  /// What the menu's addresses take along may change while a view is shown.
  VelTarn.updateMenu = () => {
    for (const [name, path, , choices] of site.entries(site.results())) {
      menuLinks.get(name).setAttribute('href', VelTarn.address(path, choices));
    }
  };

  function describeProblems(problems) {
    return make('div', {class: 'problem', role: 'alert'},
        make('h2', {}, 'Part of these results cannot be shown'),
        ...problems.map((text) => make('p', {}, text)));
  }

  /// The notice about scripts and files that cannot be read; it stays above every view.
  VelTarn.problemPanel = describeProblems;

  function spaceFor(name) {
    const overview = document.getElementById('OverviewSpace');
    const content = document.getElementById('ContentSpace');
    const [shown, hidden] = name === 'overview' ? [overview, content] : [content, overview];
    hidden.hidden = true;
    hidden.removeAttribute('role');
    hidden.replaceChildren();
    shown.hidden = false;
    shown.setAttribute('role', 'main');
    shown.replaceChildren();
    return shown;
  }

  function viewOf(route) {
    if (route.path.length === 0) return 'overview';
    if (route.path[0] === 'tree') return route.path[2] || 'tree';
    return route.path[0];
  }

  /// Sorting and choosing draw a view anew; the keyboard stays where it was. Another view starts at
  /// its title, and so does one in which what had the keyboard is gone.
  function placeFocus(space, sameView, focused) {
    if (sameView) {
      if (!focused || focused === document.body) return;
      const key = focused.dataset.focus;
      const last = key && document.querySelector('[data-focus="' + CSS.escape(key) + '"]');
      if (last) {
        last.focus({preventScroll: true});
        return;
      }
    }
    window.scrollTo(0, 0);
    const title = space.querySelector('h1');
    if (title) title.focus({preventScroll: true});
  }

  function unknownView(space) {
    space.append(make('h1', {tabindex: '-1'}, 'There is nothing at this address'),
        make('p', {}, make('a', {href: '#/'}, site.home)));
  }

  let shownPlace = null;
  let problems = [];

  const ChangedTexts = 'a text with a tab or another control character. The usual cause is a backslash ' +
      'in a name or a description of the model: a script takes it and the sign behind it for something ' +
      'else, as "\\t" in C:\\temp for a tab. Names and descriptions may differ from the model.';

  /// What is said about texts that were read, but not as they stand in the model.
  function describeChanges(sources) {
    return make('div', {class: 'problem', role: 'alert'}, make('h2', {}, 'Some texts may not be those of the model'),
        make('p', {}, VelTarn.sayOf(sources, 'holds', 'hold', ChangedTexts)));
  }

  function addProblem(text) {
    if (text !== '' && !problems.includes(text)) problems.push(text);
  }

  function fillSpace(space, view, route, kept) {
    if (site === analysis) addProblem(VelTarn.fmeaProblem());
    if (problems.length > 0) space.append(describeProblems(problems));
    if (VelTarn.changedSources.length > 0) space.append(describeChanges(VelTarn.changedSources));
    try {
      if (view) view.render(space, route, kept);
      else unknownView(space);
    } catch (error) {
      const told = error.source && problems.some((text) => text.includes(error.source));
      space.append(make('h1', {tabindex: '-1'}, 'This view cannot be shown'),
          told ? make('p', {}, error.source + ' could not be read; see above.') : describeProblems([error.message]));
    }
  }

  VelTarn.show = () => {
    if (VelTarn.shownHash === window.location.hash && shownPlace !== null) return;
    const route = VelTarn.currentRoute();
    const name = viewOf(route);
    const place = route.path.join('/');
    const focused = document.activeElement;
    const kept = VelTarn.keptPlace();
    if (VelTarn.leaveView) VelTarn.leaveView();
    VelTarn.leaveView = null;
    VelTarn.tellPlace = null;
    let results = null;
    try {
      results = site.results();
    } catch (error) {
      addProblem(error.message);
    }
    fillMenu(name, results);
    const space = spaceFor(name);
    if (results) fillSpace(space, site.views[name], route, kept && kept.view);
    else space.append(make('h1', {tabindex: '-1'}, heading), describeProblems(problems));
    const title = space.querySelector('h1');
    document.title = (title ? title.textContent + ' - ' : '') + pageTitle;
    if (shownPlace !== null) placeFocus(space, shownPlace === place, focused);
    if (kept) window.scrollTo(0, kept.scroll);
    shownPlace = place;
    VelTarn.shownHash = window.location.hash;
  };

  /// Two steps of the way may have the same address, which only this event tells apart.
  function onStep(event) {
    if (!event.state || VelTarn.shownHash !== window.location.hash) return;
    VelTarn.shownHash = null;
    VelTarn.show();
  }

  /// A view that holds listeners or observers outside its own elements gives the function that ends
  /// them.
  VelTarn.whenLeft = (end) => {
    const before = VelTarn.leaveView;
    VelTarn.leaveView = () => {
      if (before) before();
      end();
    };
  };

  function preparePage() {
    document.documentElement.lang = 'en';
    document.head.appendChild(
        make('meta', {name: 'viewport', content: 'width=device-width, initial-scale=1'}));
    // The table only places the parts of the page and means nothing to a screen reader.
    document.getElementById('BodyTable').setAttribute('role', 'presentation');
  }

  /// Shows the results of the variable and follows the address line from then on.
  VelTarn.start = async (variable, pages = analysis) => {
    source = variable;
    site = pages;
    problems = await site.prepare();
    window.addEventListener('hashchange', VelTarn.show);
    window.addEventListener('popstate', onStep);
    VelTarn.show();
    VelTarn.followPlaces();
  };

  /// The head of the page, before anything is read.
  window.menuTransform = (variable, title) => {
    source = variable;
    heading = title;
    VelTarn.heading = title;
    preparePage();
    fillMenu('', null);
  };

  window.changeTitle = (title) => {
    pageTitle = title;
    document.title = title;
  };
}());
