// Designs that a search has found: from the scripts beside the page to objects that the views show.
//
// `<run>.js` holds the state of the search, `<run>-Model.js` what the state leaves out of the model: the
// bounds of the objectives and, for searches of safety levels, the hazards with their cut sets. The
// second one may be missing. Both come from an XML library, so texts of the model are escaped in them.
'use strict';

(function () {
  const Controls = /[\u0000-\u0008\u000b\u000c\u000e-\u001f]|&#(?:x0*(?:[0-8bcef]|1[0-9a-f])|0*(?:[0-8]|1[124-9]|2\d|3[01]));/gi;

  /// The root element of a text that was read as Windows-1252.
  function parse(xml, source) {
    const document = new DOMParser().parseFromString(xml, 'text/xml');
    const error = document.getElementsByTagName('parsererror')[0];
    if (error) throw new Error(source + ' is not well formed. ' + error.textContent.trim());
    return document.documentElement;
  }

  const childrenNamed = (element, name) => Array.from(element ? element.children : [])
      .filter((child) => child.nodeName === name);
  const childNamed = (element, name) => childrenNamed(element, name)[0] || null;
  const textOf = (element, name) => {
    const child = childNamed(element, name);
    return child ? child.textContent.trim() : '';
  };

  const Signs = {amp: '&', lt: '<', gt: '>', quot: '"', apos: '\''};

  /// The text behind entities, for parts that are read without a parser.
  const plain = (text) => text.replace(/&(?:(amp|lt|gt|quot|apos)|#x([0-9a-f]+)|#(\d+));/gi,
      (all, name, hex, decimal) => {
        if (name) return Signs[name.toLowerCase()];
        const code = hex ? parseInt(hex, 16) : Number(decimal);
        return code <= 0x10ffff ? String.fromCodePoint(code) : '\ufffd';
      }).trim();

  /// Six places are written for each value, needed or not.
  const shortNumber = (text) => (/^-?\d+\.\d+$/.test(text) ? text.replace(/\.?0+$/, '') : text);

  const Individuals = /<Individual>([\s\S]*?)<\/Individual>/g;
  const Id = /<IndividualID>\s*(-?\d+)\s*</;
  const Altered = /<LastAlteredGeneration>\s*(-?\d+)\s*</;
  const Evaluation = /<Evaluation>\s*<Name>([^<]*)<\/Name>\s*<Value>([^<]*)<\/Value>/g;

  function between(text, start, end) {
    const from = text.indexOf(start);
    const to = text.lastIndexOf(end);
    return from < 0 || to < from ? '' : text.slice(from + start.length, to);
  }

  /// Without the indentation, which is deeper for the same design in the archive.
  const compact = (xml) => xml.replace(/>\s+</g, '><').trim();

  /// A design fills hundreds of lines, and there may be thousands: what is needed for lists is taken by
  /// patterns, and what it chooses is parsed when it is looked at.
  function readDesign(text) {
    const evaluations = new Map();
    for (const [, name, value] of between(text, '<Evaluations>', '</Evaluations>').matchAll(Evaluation)) {
      evaluations.set(plain(name), value.trim());
    }
    const altered = Altered.exec(text);
    return {id: (Id.exec(text) || ['', ''])[1], encoding: between(text, '<Encoding>', '</Encoding>').trim(),
      evaluations, altered: altered ? altered[1] : '', ranks: [], archived: false, population: false};
  }

  /// The same design may stand in a frontier and in the archive. Ids repeat there; should what is behind
  /// one id differ, both are kept.
  class DesignList {
    constructor() {
      this.designs = [];
      this.byKey = new Map();
    }

    add(design) {
      let key = design.id;
      for (let copy = 2; this.byKey.has(key); ++copy) {
        const known = this.byKey.get(key);
        if (compact(known.encoding) === compact(design.encoding) && known.text === design.text) return known;
        key = design.id + '.' + copy;
      }
      design.key = key;
      this.byKey.set(key, design);
      this.designs.push(design);
      return design;
    }
  }

  function readObjectives(state, texts) {
    const listed = childrenNamed(childNamed(state, 'Objectives'), 'Objective')
        .map((element) => ({name: textOf(element, 'Name'), goal: textOf(element, 'Goal')}));
    // Searches of safety levels measure two values that the model may not ask for.
    const names = new Set(texts.flatMap((design) => Array.from(design.evaluations.keys())));
    listed.forEach(({name}) => names.delete(name));
    const all = [...listed, ...Array.from(names, (name) => ({name, goal: ''}))];
    return all.map((objective) => ({...objective, maximise: objective.goal === 'Maximise',
      measured: texts.some((design) => design.evaluations.has(objective.name)),
      lower: NaN, upper: NaN}));
  }

  /// Which designs stand where, in the order of the file.
  function placeDesigns(state, texts) {
    const list = new DesignList();
    const individuals = (population) => childrenNamed(population, 'Individual')
        .map((element) => list.add(texts[Number(element.getAttribute('place'))]));
    const frontiers = [childNamed(state, 'NonDominatedPopulation'),
      ...childrenNamed(childNamed(state, 'OtherNonDominatedPopulations'), 'NonDominatedPopulation')];
    frontiers.forEach((frontier, index) =>
      individuals(frontier).forEach((design) => design.ranks.push(index + 1)));
    for (const archive of childrenNamed(childNamed(state, 'ArchiveNonDominatedPopulations'),
        'NonDominatedPopulation')) {
      individuals(archive).forEach((design) => { design.archived = true; });
    }
    individuals(childNamed(state, 'Population')).forEach((design) => { design.population = true; });
    return list;
  }

  /// Feasible: true, false, or null where the bounds are not known. The archive takes in nothing else.
  function judge(design, search) {
    design.broken = design.archived ? [] : search.objectives.filter((objective, index) =>
      design.values[index] < objective.lower || design.values[index] > objective.upper);
    design.feasible = design.archived || (search.bounds ? design.broken.length === 0 : null);
  }

  const isBetter = (left, right, maximise) => (maximise ? left > right : left < right);

  /// True when the first is at least as good in all of these objectives and better in one. Values that
  /// are absent take no part.
  const dominates = (first, second, places, objectives) =>
    places.some((place) => isBetter(first.values[place], second.values[place], objectives[place].maximise)) &&
      !places.some((place) => isBetter(second.values[place], first.values[place], objectives[place].maximise));

  /// Those that no other dominates in these objectives, by their places in the list of objectives.
  VelTarn.undominated = (designs, places, objectives) => {
    const sign = (place) => (objectives[place].maximise ? -1 : 1);
    const byValues = designs.slice().sort((left, right) => places.reduce((order, place) =>
      order || sign(place) * (left.values[place] - right.values[place]) || 0, 0));
    const front = [];
    // A design can be dominated by one that is sorted before it only.
    for (const design of byValues) {
      if (!front.some((other) => dominates(other, design, places, objectives))) front.push(design);
    }
    return front;
  };

  /// The best designs that are better than this one in some objective and worse in none.
  VelTarn.dominators = (search, design) => search.designs.filter((other) =>
    (other.kind === 'front' || other.kind === 'archive') && dominates(other, design, search.measured,
        search.objectives));

  /// Kinds of designs as plots and lists show them, in the order in which legends name them.
  VelTarn.designKinds = {
    front: {text: 'First frontier'},
    archive: {text: 'In the archive only'},
    dominated: {text: 'Dominated'},
    infeasible: {text: 'Infeasible'},
  };

  /// A search with one population has no frontiers; its best designs are those that none dominates.
  VelTarn.kindText = (kind, designs) =>
    (kind === 'front' && designs.some((design) => design.population) ? 'Not dominated' :
        VelTarn.designKinds[kind].text);

  function classify(search) {
    const {designs, objectives} = search;
    let first = new Set(designs.filter((design) => design.ranks.includes(1)));
    if (search.kind === 'CoitGA') {
      const places = objectives.flatMap((objective, place) => (objective.measured ? [place] : []));
      first = new Set(VelTarn.undominated(designs.filter((design) => design.feasible !== false), places,
          objectives));
    }
    for (const design of designs) {
      if (design.feasible === false) design.kind = 'infeasible';
      else if (first.has(design)) design.kind = 'front';
      else design.kind = design.archived ? 'archive' : 'dominated';
    }
  }

  /// Where a design stands, in words.
  VelTarn.placeText = (design) => {
    if (design.population) return design.kind === 'front' ? 'Not dominated' : 'Population';
    const frontiers = design.ranks.map((rank) => (rank === 1 ? 'First frontier' : 'Frontier ' + rank));
    const places = [...frontiers, ...(design.archived ? ['archive'] : [])].join(', ');
    return places.charAt(0).toUpperCase() + places.slice(1);
  };

  VelTarn.feasibleText = (design) =>
    (design.feasible === null ? 'Not known' : design.feasible ? 'Feasible' : 'Infeasible');

  /// The objectives whose bounds a design breaks, in words.
  VelTarn.brokenText = (design) => design.broken.map((objective) => {
    const value = design.evaluations.get(objective.name);
    const below = Number(value) < objective.lower;
    return objective.name + ' ' + shortNumber(value) + (below ? ' is below ' + objective.lower : ' is above ' +
        objective.upper);
  }).join('; ');

  function readBounds(search, root) {
    for (const element of childrenNamed(childNamed(root, 'Objectives'), 'Objective')) {
      const objective = search.objectives.find((entry) => entry.name === textOf(element, 'Name'));
      const bound = (name) => (childNamed(element, name) ? Number(textOf(element, name)) : NaN);
      if (objective) Object.assign(objective, {lower: bound('LowerBound'), upper: bound('UpperBound')});
    }
    search.bounds = true;
  }

  function readHazard(element) {
    return {
      name: textOf(element, 'Name'),
      level: Number(textOf(element, 'SIL')),
      cutSets: childrenNamed(childNamed(element, 'CutSets'), 'CutSet').map((set) =>
        childrenNamed(set, 'Event').map((event) =>
          ({id: event.getAttribute('ID'), name: event.textContent.trim()}))),
    };
  }

  /// What the state of a search says, with all its designs. `model` is the text of the second script, or
  /// null. Throws when the state cannot be taken apart.
  VelTarn.readSearch = (state, model, source) => {
    const texts = [];
    const skeleton = state.replace(Controls, '\ufffd').replace(Individuals, (all, text) => {
      texts.push(readDesign(text));
      return '<Individual place="' + (texts.length - 1) + '"/>';
    });
    const root = parse(skeleton, source);
    const element = childNamed(root, 'NSGA') || childNamed(root, 'CoitGA');
    if (!element) throw new Error(source + ' holds no state of a search.');
    const objectives = readObjectives(element, texts);
    for (const design of texts) {
      design.texts = objectives.map(({name}) => shortNumber(design.evaluations.get(name) || ''));
      design.values = design.texts.map((text) => (text === '' ? NaN : Number(text)));
      design.text = design.texts.join(' ');
    }
    const {designs, byKey} = placeDesigns(element, texts);
    const search = {
      kind: element.nodeName, model: root.getAttribute('model') || '', file: textOf(element, 'ModelFileName'),
      seed: textOf(element, 'RandomSeed'), generation: textOf(element, 'Generation'),
      encoding: textOf(element, 'EncodingType'), time: textOf(element, 'TimeElapsed'),
      objectives, designs, byKey, bounds: false, hazards: null,
    };
    if (model !== null) {
      const parts = parse(model.replace(Controls, '\ufffd'), source.replace(/\.js$/, '-Model.js'));
      readBounds(search, parts);
      const hazards = childNamed(parts, 'Hazards');
      if (hazards) search.hazards = childrenNamed(hazards, 'Hazard').map(readHazard);
    }
    designs.forEach((design) => judge(design, search));
    classify(search);
    search.measured = objectives.flatMap((objective, place) => (objective.measured ? [place] : []));
    return search;
  };

  const Words = /<(?:Name|FullName|BasicEvent|Allocation)>([^<]+)</g;

  /// What a filter looks through: the number of a design, where it stands, and the names of its choices.
  VelTarn.designWords = (design) => {
    if (design.words === undefined) {
      const names = new Set(Array.from(design.encoding.matchAll(Words), ([, name]) => plain(name)));
      design.words = ['Design ' + design.key, VelTarn.placeText(design), VelTarn.feasibleText(design),
          ...names].join(' ');
    }
    return design.words;
  };

  const EncodingReaders = {
    FixedEncoding: (element) => VelTarn.fixedChoices(element),
    TreeEncoding: (element) => VelTarn.treeChoices(element),
    FixedASILEncoding: (element) => VelTarn.fixedLevels(element),
    TreeASILEncoding: (element) => VelTarn.treeLevels(element),
  };

  /// What a design chooses: {levels, heads, columns, rows}, with rows {key, names, fullName, depth, cells} in
  /// the order of the file; `names` go under `heads`, `cells` under `columns`, and `levels` is true for
  /// safety levels. Throws when its encoding is none that the pages know.
  VelTarn.choicesOf = (design) => {
    if (!design.choices) {
      const element = design.encoding === '' ? null : parse(design.encoding, 'The encoding of design ' + design.key);
      const read = element && EncodingReaders[element.nodeName];
      if (!read) throw new Error('Design ' + design.key + ' has no encoding that these pages can show.');
      design.choices = read(element);
    }
    return design.choices;
  };

  /// For the readers of encodings.
  VelTarn.xmlChild = childNamed;
  VelTarn.xmlChildren = childrenNamed;
  VelTarn.xmlText = textOf;

  /// "3 designs", "1 design".
  VelTarn.countOf = (count, word) => count + ' ' + word + (count === 1 ? '' : 's');
}());
