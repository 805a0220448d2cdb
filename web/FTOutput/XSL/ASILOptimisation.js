// Safety levels that a search has chosen: event by event, and the cut sets that they leave invalid.
'use strict';

(function () {
  const text = (element, name) => VelTarn.xmlText(element, name);

  /// The owner of an event stands before the last colon of its text. Two colons are part of a name.
  function splitOwner(whole) {
    const found = /^(.*[^:]):([^:]+)$/s.exec(whole);
    return found ? [found[1], found[2]] : ['', whole];
  }

  function levelRow(component, event, id, level) {
    const known = !Number.isNaN(level);
    return {key: component + '\n' + event + '\n' + id, names: [component || 'None', event],
      fullName: (component === '' ? '' : component + '.') + event, depth: 0, id: Number(id),
      level: known ? level : 0, cells: [known ? String(level) : '\u2013']};
  }

  const choices = (rows) => ({levels: true, heads: ['Component', 'Event'], columns: ['Level'], rows});

  /// A flat list of events.
  VelTarn.fixedLevels = (element) => choices(VelTarn.xmlChildren(element, 'EncodingNode').map((node) => {
    const part = VelTarn.xmlChild(node, 'Component');
    // One of the two texts has the owner in it. Of an event without one, a text is "None".
    const known = [text(part, 'Name'), text(part, 'BasicEvent')].filter((whole) => whole !== '' && whole !== 'None');
    const shown = known.find((whole) => splitOwner(whole)[0] !== '') || known[0] || 'None';
    const level = text(part, 'SafetyRequirement');
    return levelRow(...splitOwner(shown), text(part, 'ID'), level === '' ? NaN : Number(level));
  }));

  /// The events of each component along the hierarchy.
  VelTarn.treeLevels = (element) => choices(VelTarn.asilLevels(element)
      .map((entry) => levelRow(entry.component, entry.event, entry.id, entry.level)));

  /// The cut sets of each hazard whose events have less than the hazard's level together, those that lack
  /// most first: {hazard, needed, sum, events: [{name, level}]}. Events without a level count nothing.
  VelTarn.invalidCutSets = (search, design) => {
    const levels = new Map(VelTarn.choicesOf(design).rows.map((row) => [row.id, row.level]));
    const invalid = [];
    for (const hazard of search.hazards) {
      for (const set of hazard.cutSets) {
        const events = set.map(({id, name}) => ({name, level: levels.get(Number(id)) || 0}));
        const sum = events.reduce((total, event) => total + event.level, 0);
        if (sum < hazard.level) invalid.push({hazard: hazard.name, needed: hazard.level, sum, events});
      }
    }
    return invalid.sort((left, right) => (right.needed - right.sum) - (left.needed - left.sum));
  };
}());
