// What designs of components choose: replicas of the outermost components, or implementations along the
// hierarchy.
'use strict';

(function () {
  const child = (element, name) => VelTarn.xmlChild(element, name);
  const text = (element, name) => VelTarn.xmlText(element, name);
  const nodesOf = (element) => VelTarn.xmlChildren(element, 'EncodingNode');

  /// How often each implementation stands in the list, in the order of first use. A number of 0 is a place
  /// without a replica.
  function countReplicas(node) {
    const counts = new Map();
    for (const entry of VelTarn.xmlChildren(child(node, 'Implementations'), 'Implementation')) {
      const number = text(entry, 'Index');
      if (number === '0') continue;
      const name = text(entry, 'Name') || 'Implementation ' + number;
      counts.set(name, (counts.get(name) || 0) + 1);
    }
    return counts;
  }

  /// One list of replicas for each component.
  VelTarn.fixedChoices = (element) => ({
    levels: false,
    heads: ['Component'],
    columns: ['Replicas', 'Implementations'],
    rows: nodesOf(element).map((node) => {
      const name = text(child(node, 'Component'), 'Name');
      const counts = countReplicas(node);
      const replicas = Array.from(counts.values()).reduce((sum, count) => sum + count, 0);
      return {key: name, names: [name], fullName: name, depth: 0, cells: [String(replicas),
        Array.from(counts, ([implementation, count]) =>
          (count > 1 ? count + ' \u00d7 ' : '') + implementation).join(' + ') || 'none']};
    }),
  });

  /// Components inside the chosen implementation of another stand under it.
  VelTarn.treeChoices = (element) => {
    const rows = [];
    const walk = (node, depth, above) => {
      const component = child(node, 'Component');
      const name = text(component, 'Name');
      // Names hold the way to a component, and the indentation shows it already.
      const inside = above !== '' && name.startsWith(above + '.') ? name.slice(above.length + 1) : name;
      rows.push({key: name, names: [inside], fullName: name, depth,
        cells: [text(child(component, 'Implementation'), 'Name'), text(node, 'Allocation')]});
      nodesOf(child(node, 'SubNodes')).forEach((below) => walk(below, depth + 1, name));
    };
    nodesOf(element).forEach((node) => walk(node, 0, ''));
    const allocated = rows.some((row) => row.cells[1] !== '');
    if (!allocated) rows.forEach((row) => row.cells.pop());
    return {levels: false, heads: ['Component'], columns: allocated ? ['Implementation', 'Allocation'] :
        ['Implementation'], rows};
  };
}());
