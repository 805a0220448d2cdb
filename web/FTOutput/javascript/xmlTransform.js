// From the strings of model/*.js to objects that the views show.
//
// The strings are the result files byte for byte: nothing in a name is escaped, and the page that
// loads them declares no character set. Both are mended here and nowhere else.
'use strict';

var VelTarn = {};

(function () {
  // Every element of the result format. A "<" that starts none of them belongs to a text.
  const Elements = 'Vel-Tarn_Results|FaultTrees|FaultTree|FMEA|Component|Events|Effects?|Name|' +
      'ShortName|SID|Description|Unavailability|UnavailabilitySort|Frequency|Severity|SIL|TopNode|' +
      'SinglePointFailure|CutSetsSummary|CutSets|And|Or|Not|OutputDeviation|InputDeviation|' +
      'ExportedDeviation|Goto|PCCF|Children|WarningList|Warning|Event|BasicEvent|NormalEvent|' +
      'ComplementEvent|ModuleEvent|CCF|Circle|OutputDeviationNode|InputDeviationNode|' +
      'ExportedDeviationNode';
  const StrayMarkup = new RegExp('&|\\]\\]>|<(?!\\?xml |/?(?:' + Elements + ')(?:>|/>| [A-Za-z]+="| ?/>))', 'g');
  const Escaped = {'&': '&amp;', '<': '&lt;', ']]>': ']]&gt;'};
  const ControlCharacters = /[\u0000-\u0008\u000b\u000c\u000e-\u001f]/g;
  const AllocationBlock = /<SafetyAllocations>[\s\S]*<\/SafetyAllocations>/;

  const ModelFileName = /(<ModelFileName>)([\s\S]*?)(<\/ModelFileName>)/;

  /// The text with what would be markup, but is none of the format's, turned into plain text. Safety
  /// allocations are left alone but for the name of the file: they come from an XML library, which
  /// escapes.
  function escapeStrayMarkup(xml) {
    const mend = (text) => text
        .replace(StrayMarkup, (found) => Escaped[found])
        .replace(ControlCharacters, '\ufffd');
    const block = AllocationBlock.exec(xml);
    if (!block) return mend(xml);
    const allocations = block[0].replace(ModelFileName,
        (all, start, name, end) => start + mend(name) + end);
    return mend(xml.slice(0, block.index)) + allocations + mend(xml.slice(block.index + block[0].length));
  }

  // Nothing between two elements of these files, so one of them in a text was made by the script, from
  // a backslash. Warnings are written with their line ends on purpose, as scripts spell them.
  const MadeByBackslash = /[\u0000-\u001f]/;
  const WarningBlock = /<WarningList>[\s\S]*<\/WarningList>/;

  /// The files of which a text holds a tab or another control character, as far as they were read.
  VelTarn.changedSources = [];

  function noteChangedTexts(xml, source) {
    const texts = xml.replace(WarningBlock, '').replace(AllocationBlock, '');
    if (MadeByBackslash.test(texts)) VelTarn.changedSources.push(source);
  }

  const unreadable = (sources, detail) => VelTarn.sayOf(sources, 'is', 'are', 'not well formed. A name or ' +
      'description in the model holds characters that look like part of the file itself. ' + detail);

  function parse(xml, source) {
    const parsed = new DOMParser().parseFromString(escapeStrayMarkup(VelTarn.decodeText(xml)), 'text/xml');
    const error = parsed.getElementsByTagName('parsererror')[0];
    if (error) {
      // Some browsers wrap what they found in sentences about a page that nobody sees.
      const detail = (error.querySelector('div') || error).textContent.trim();
      throw Object.assign(new Error(unreadable([source], detail)), {source, detail});
    }
    noteChangedTexts(xml, source);
    return parsed.documentElement;
  }

  const childrenNamed = (element, name) =>
      Array.from(element.children).filter((child) => child.nodeName === name);
  const childNamed = (element, name) =>
      element ? childrenNamed(element, name)[0] || null : null;
  const textOf = (element, name) => {
    const child = childNamed(element, name);
    return child ? child.textContent.trim() : '';
  };

  /// A figure keeps the text of the file, which is what other results show, beside its value.
  function figure(text, exact) {
    const value = text === '' ? NaN : Number(exact || text);
    return {text: value === -1 ? '' : text, value: value === -1 ? NaN : value};
  }

  /// SIL is absent where no hazard stands behind the tree: zero and "none" are different statements.
  function readFigures(element) {
    return {
      unavailability: figure(textOf(element, 'Unavailability'), textOf(element, 'UnavailabilitySort')),
      frequency: figure(textOf(element, 'Frequency')),
      severity: figure(textOf(element, 'Severity')),
      sil: figure(textOf(element, 'SIL')),
    };
  }

  function readSummary(element) {
    const summary = childNamed(element, 'CutSetsSummary');
    if (!summary) return [];
    return childrenNamed(summary, 'CutSets').map((entry) => ({
      order: Number(entry.getAttribute('order')),
      pruned: entry.getAttribute('pruned') === 'true',
      count: Number(entry.textContent),
    }));
  }

  function readTree(element) {
    const summary = readSummary(element);
    return {
      ...readFigures(element),
      id: element.getAttribute('ID'),
      name: textOf(element, 'Name'),
      description: textOf(element, 'Description'),
      summary,
      cutSetCount: summary.reduce((sum, entry) => sum + (entry.pruned ? 0 : entry.count), 0),
      tops: Array.from((childNamed(element, 'TopNode') || {children: []}).children),
    };
  }

  function readAllocation(individual) {
    const evaluation = individual.getElementsByTagName('Evaluation')[0];
    return {
      id: textOf(individual, 'IndividualID'),
      cost: evaluation ? figure(textOf(evaluation, 'Value')) : figure(''),
      levels: VelTarn.asilLevels(individual),
    };
  }

  /// The whole of FaultTrees.js.
  function readResults(xml, source) {
    const root = parse(xml, source);
    const trees = childNamed(root, 'FaultTrees');
    const allocations = childNamed(root, 'SafetyAllocations');
    const population = childNamed(allocations, 'Population');
    const warnings = childNamed(root, 'WarningList');
    const list = trees ? childrenNamed(trees, 'FaultTree').map(readTree) : [];
    return {
      model: root.getAttribute('model') || '',
      version: [root.getAttribute('majorVersion'), root.getAttribute('minorVersion'),
        root.getAttribute('version')].join('.'),
      versionDate: root.getAttribute('versionDate') || '',
      trees: list,
      // Those without a tree share one number; the first of them has it.
      treesById: new Map(list.slice().reverse().map((tree) => [tree.id, tree])),
      allocations: population ? childrenNamed(population, 'Individual').map(readAllocation) : [],
      warnings: warnings ?
          childrenNamed(warnings, 'Warning').map((warning) => warning.textContent) : [],
    };
  }

  function readEvent(element, component) {
    const effects = childNamed(element, 'Effects');
    return {
      id: element.getAttribute('ID'),
      type: element.nodeName,
      component,
      name: textOf(element, 'Name'),
      shortName: textOf(element, 'ShortName'),
      description: textOf(element, 'Description'),
      unavailability: figure(textOf(element, 'Unavailability')),
      frequency: figure(textOf(element, 'Frequency')),
      effects: effects ? childrenNamed(effects, 'Effect').map((effect) => ({
        id: effect.getAttribute('ID'),
        name: textOf(effect, 'Name'),
        direct: textOf(effect, 'SinglePointFailure') === 'true',
      })) : [],
    };
  }

  function readFMEA(element) {
    const table = {components: [], events: new Map()};
    for (const entry of childrenNamed(element, 'Component')) {
      const component = {name: textOf(entry, 'Name'), sid: textOf(entry, 'SID'), events: []};
      const events = childNamed(entry, 'Events');
      component.events = Array.from(events ? events.children : [])
          .map((event) => readEvent(event, component));
      component.events.forEach((event) => table.events.set(event.id, event));
      table.components.push(component);
    }
    return table;
  }

  const OrderStart = /<CutSets order="(\d+)" ?>/g;
  const OneCutSet = /<CutSet><Unavailability>([^<]*)<\/Unavailability><Frequency>([^<]*)<\/Frequency><UnavailabilitySort>([^<]*)<\/UnavailabilitySort><Events>(.*?)<\/Events><\/CutSet>/g;
  const OneId = /ID="(-?\d+)"/g;

  /// Cut sets are figures and ids only, no text of the model, and there may be a hundred thousand: a
  /// scan reads them in a tenth of the time and memory that a document of them takes.
  function scanCutSets(xml) {
    const starts = Array.from(xml.matchAll(OrderStart));
    const cutSets = [];
    starts.forEach((start, index) => {
      const end = index + 1 < starts.length ? starts[index + 1].index : xml.length;
      const order = Number(start[1]);
      for (const found of xml.slice(start.index, end).matchAll(OneCutSet)) {
        cutSets.push({
          order,
          unavailability: figure(found[1], found[3]),
          frequency: figure(found[2]),
          events: Array.from(found[4].matchAll(OneId), (id) => id[1]),
        });
      }
    });
    return cutSets;
  }

  /// One CutSets_<id>.js: the failure modes and effects, and the cut sets of the tree.
  function readCutSets(xml, source) {
    const start = xml.lastIndexOf('<AllCutSets>');
    const end = xml.lastIndexOf('</AllCutSets>');
    const head = start < 0 ? xml : xml.slice(0, start) + xml.slice(end + '</AllCutSets>'.length);
    const table = parse(head, source).getElementsByTagName('FMEA')[0];
    return {
      fmea: table ? readFMEA(table) : null,
      cutSets: start < 0 ? [] : scanCutSets(xml.slice(start, end)),
    };
  }

  /// What was read once is kept: views come and go, the scripts do not change.
  const read = new Map();

  function remember(variable, reader, source) {
    if (!read.has(variable)) {
      const xml = window[variable];
      read.set(variable, typeof xml === 'string' ? reader(xml, source) : null);
    }
    return read.get(variable);
  }

  /// Null when the script did not load. Throws when its text cannot be parsed.
  VelTarn.results = (variable) => remember(variable, readResults, 'model/' + variable + '.js');

  /// Null when the script of this tree did not load.
  VelTarn.cutSetsOf = (treeId) =>
    remember('CutSets_' + treeId, readCutSets, 'model/CutSets_' + treeId + '.js');

  let found;

  /// Every cut set script has the same failure modes, so the first that can be read will do.
  function findFMEA() {
    const trees = VelTarn.results('FaultTrees').trees.filter((tree) => tree.tops.length > 0);
    const errors = [];
    let anyRead = false;
    for (const tree of trees) {
      try {
        const file = VelTarn.cutSetsOf(tree.id);
        if (file && file.fmea) return {table: file.fmea, unread: false, problem: ''};
        anyRead = anyRead || file !== null;
      } catch (error) {
        errors.push(error);
      }
    }
    return {table: null, unread: trees.length > 0 && !anyRead,
      problem: errors.length > 0 ? unreadable(errors.map((error) => error.source), errors[0].detail) : ''};
  }

  function searchFMEA() {
    if (found === undefined) found = findFMEA();
    return found;
  }

  /// Null when no script has the failure modes: the run left them out, or no script could be read.
  VelTarn.fmea = () => searchFMEA().table;

  /// True when there may be failure modes but no script that could have them was read.
  VelTarn.fmeaUnread = () => searchFMEA().unread;

  /// Why no failure modes were found in scripts that are not well formed; else empty.
  VelTarn.fmeaProblem = () => searchFMEA().problem;

  /// The event of the id, or null for one that the failure modes do not list.
  VelTarn.findEvent = (id) => {
    const table = VelTarn.fmea();
    return (table && table.events.get(id)) || null;
  };

  VelTarn.eventName = (id) => {
    const event = VelTarn.findEvent(id);
    return event ? event.name : 'Event ' + id;
  };

  VelTarn.findTree = (id) => VelTarn.results('FaultTrees').treesById.get(id) || null;

  /// The logic below a tree's top node as objects {key, id, type, name, children, parent, shared}.
  /// A part that stands at several places of the tree is written at each of them; `shared` names the
  /// first place, and only that one has children here. The same id is not enough to tell: a gate and
  /// its negated form have one id, so the whole part below is compared, by a number for each form.
  VelTarn.logicOf = (tree) => {
    const forms = new Map();
    const firstOfForm = new Map();
    let count = 0;
    const build = (element, parent) => {
      const node = {key: String(count++), id: element.getAttribute('ID'), type: element.nodeName,
        name: textOf(element, 'Name'), children: [], parent, shared: null, form: 0};
      if (node.type === 'Event') {
        const event = VelTarn.findEvent(node.id);
        node.event = event;
        node.type = event ? event.type : 'Event';
        node.name = VelTarn.eventName(node.id);
      } else {
        // Above the top event is no place that it could be called from.
        if (!parent && node.type === 'Goto') node.type = 'TopEvent';
        // Gates that an expression makes have no name of their own.
        if (node.name === '') node.name = VelTarn.typeText(node);
        const list = childNamed(element, 'Children') || element;
        node.children = Array.from(list.children)
            .filter((child) => child.nodeName !== 'Name').map((child) => build(child, node));
      }
      const text = node.type + ' ' + node.id + ' ' + node.children.map((child) => child.form);
      if (!forms.has(text)) forms.set(text, forms.size);
      node.form = forms.get(text);
      return node;
    };
    const shareRepeats = (node) => {
      if (node.children.length === 0) return;
      if (firstOfForm.has(node.form)) {
        node.shared = firstOfForm.get(node.form);
        node.children = [];
        return;
      }
      firstOfForm.set(node.form, node);
      node.children.forEach(shareRepeats);
    };
    // A top gate without an element of its own leaves its inputs side by side.
    const buildTop = () => {
      const node = {key: String(count++), id: tree.id, type: 'Top', name: tree.name, parent: null,
        shared: null, form: 0};
      node.children = tree.tops.map((element) => build(element, node));
      return node;
    };
    if (tree.tops.length === 0) return null;
    const root = tree.tops.length === 1 ? build(tree.tops[0], null) : buildTop();
    shareRepeats(root);
    return root;
  };
}());
