// What depends on the browser and on how it opened the page: character sets, scripts that did not
// load, elements, and the address line that holds the state of the page.
'use strict';

(function () {
  // Windows-1252 is what browsers take for Latin-1; these are the places where the two differ.
  const WindowsOnly = '\u20ac\u0081\u201a\u0192\u201e\u2026\u2020\u2021\u02c6\u2030\u0160\u2039' +
      '\u0152\u008d\u017d\u008f\u0090\u2018\u2019\u201c\u201d\u2022\u2013\u2014\u02dc\u2122\u0161' +
      '\u203a\u0153\u009d\u017e\u0178';
  const HighCharacters = new RegExp('[\u0080-\u00ff' + WindowsOnly + ']+', 'g');
  const Utf8Sequence = new RegExp('[\xc2-\xdf][\x80-\xbf]|\xe0[\xa0-\xbf][\x80-\xbf]|' +
      '[\xe1-\xec\xee\xef][\x80-\xbf]{2}|\xed[\x80-\x9f][\x80-\xbf]|\xf0[\x90-\xbf][\x80-\xbf]{2}|' +
      '[\xf1-\xf3][\x80-\xbf]{3}|\xf4[\x80-\x8f][\x80-\xbf]{2}', 'g');
  const NoUtf8 = /[\x80-\xab\xad-\xff]/;  // But for the sign of a negated event.

  function toByteText(text) {
    return Array.from(text, (character) => {
      const index = WindowsOnly.indexOf(character);
      return index < 0 ? character : String.fromCharCode(0x80 + index);
    }).join('');
  }

  const decoder = new TextDecoder('utf-8');
  const decodeSequence = (sequence) =>
    decoder.decode(Uint8Array.from(sequence, (character) => character.charCodeAt(0)));

  /// Model files come in Latin-1 and in UTF-8, and the sign of a negated event is one byte of
  /// Latin-1 before either. Two letters of Latin-1 may look like one of UTF-8, so a single byte that
  /// cannot be UTF-8 decides for the whole text. This is for texts that were read byte by byte, as
  /// Windows-1252.
  VelTarn.decodeBytes = (text) => {
    const runs = text.match(HighCharacters) || [];
    if (runs.some((run) => NoUtf8.test(toByteText(run).replace(Utf8Sequence, '')))) return text;
    return text.replace(HighCharacters, (run) => toByteText(run).replace(Utf8Sequence, decodeSequence));
  };

  VelTarn.decodeText = (text) =>
    (document.characterSet === 'UTF-8' && !reloaded ? text : VelTarn.decodeBytes(text));

  let reloaded = false;

  /// Appends a script and waits for it: true when the browser found the file, whatever is in it.
  function loadScript(source, charset) {
    return new Promise((resolve) => {
      const script = document.createElement('script');
      if (charset) script.charset = charset;
      script.src = source;
      script.addEventListener('load', () => resolve(true));
      script.addEventListener('error', () => resolve(false));
      document.head.appendChild(script);
    });
  }
  VelTarn.loadScript = loadScript;

  const variableOf = (source) => source.replace(/^.*\//, '').replace(/\.js$/, '');

  function modelSources() {
    return Array.from(document.querySelectorAll('script[src^="model/"]'),
        (script) => script.getAttribute('src'));
  }

  function isMisread(source) {
    const text = window[variableOf(source)];
    if (typeof text !== 'string' || document.characterSet === 'windows-1252') return false;
    if (document.characterSet === 'UTF-8') return text.includes('\ufffd');
    return /[^\x00-\x7f]/.test(text);
  }

  /// A browser that guessed another character set has lost bytes: the scripts are read again as
  /// bytes.
  VelTarn.mendCharacterSet = async () => {
    const sources = modelSources();
    if (!sources.some(isMisread)) return;
    reloaded = true;
    // The query is no part of the file's name; without it the browser would hand out what it has
    // already decoded.
    for (const source of sources) await loadScript(source + '?windows-1252', 'windows-1252');
  };

  const WhyScriptsBreak = 'there, but not readable for the browser. The usual cause is an apostrophe ' +
      '(\'), a backslash or a line break in a name or a description of the model, or in the name of the ' +
      'model file: these characters cannot stand in a script. Take them out and run the analysis again. ' +
      'The XML results (outputtype=XML) of the same model are not affected.';
  const WhyScriptsMiss = 'missing. Copy the whole folder of the results, with its folders ' +
      '"model" and "FTOutput", or run the analysis again.';

  const MostNamed = 12;

  /// One sentence about all files that share a trouble, with the verb for one of them and for more.
  VelTarn.sayOf = (files, one, more, rest) => {
    const left = files.length - MostNamed;
    return files.slice(0, MostNamed).join(', ') + (left > 0 ? ' and ' + left + ' more' : '') + ' ' +
        (files.length === 1 ? one : more) + ' ' + rest;
  };

  /// Which scripts of the model gave no data, and why. These scripts run before any of ours could
  /// listen for errors, so a broken one is loaded once more to tell broken from missing.
  VelTarn.scriptProblems = async () => {
    const broken = [];
    const missing = [];
    for (const source of modelSources()) {
      if (typeof window[variableOf(source)] === 'string') continue;
      const there = await loadScript(source, null);
      (there ? broken : missing).push(source);
    }
    return [[broken, WhyScriptsBreak], [missing, WhyScriptsMiss]].filter(([files]) => files.length > 0)
        .map(([files, why]) => VelTarn.sayOf(files, 'is', 'are', why));
  };

  const SvgNamespace = 'http://www.w3.org/2000/svg';

  function fill(element, attributes, children) {
    for (const [name, value] of Object.entries(attributes || {})) {
      if (value === null || value === undefined || value === false) continue;
      if (typeof value === 'function') element.addEventListener(name, value);
      else element.setAttribute(name, value === true ? '' : value);
    }
    // Texts become text nodes, so that nothing in a name is ever read as markup.
    element.append(...children.flat().filter((child) => child !== null && child !== undefined));
    return element;
  }

  /// An element. Functions among the attributes are listeners; strings among the children are text.
  VelTarn.make = (tag, attributes, ...children) =>
    fill(document.createElement(tag), attributes, children);

  VelTarn.makeSvg = (tag, attributes, ...children) =>
    fill(document.createElementNS(SvgNamespace, tag), attributes, children);

  /// Term and figure pairs; figures that the file does not give are named as such.
  VelTarn.figureList = (pairs) => VelTarn.make('dl', {class: 'figures'}, ...pairs.map(([term, figure]) =>
    VelTarn.make('div', {}, VelTarn.make('dt', {}, term),
        VelTarn.make('dd', {}, (figure.text === undefined ? figure : figure.text) || 'not given'))));

  /// The address of a view: its path, then what is chosen in it. Empty choices are left out.
  VelTarn.address = (path, choices) => {
    const query = new URLSearchParams();
    for (const [name, value] of Object.entries(choices || {})) {
      if (value !== '' && value !== null && value !== undefined) query.set(name, value);
    }
    const text = query.toString();
    return '#/' + path.map(encodeURIComponent).join('/') + (text ? '?' + text : '');
  };

  /// The view that the address line asks for: {path: [...], choices: {...}}.
  VelTarn.currentRoute = () => {
    const [path, query] = window.location.hash.replace(/^#\/?/, '').split(/\?(.*)/s);
    let parts = [];
    try {
      parts = path.split('/').filter((part) => part !== '').map(decodeURIComponent);
    } catch (error) {
      parts = [];  // Typed by hand and not an address of ours: the overview.
    }
    return {path: parts, choices: Object.fromEntries(new URLSearchParams(query || ''))};
  };

  /// What of a view the address does not say, as plain data: a function that the view sets while it is
  /// drawn. How far the page is scrolled is kept for all of them.
  VelTarn.tellPlace = null;

  /// {scroll, view} as last kept for this step of the reader's way; null when the step is new.
  VelTarn.keptPlace = () => (window.history.state && window.history.state.place) || null;

  /// Keeps the place in the present entry of the history, so that back and forward find it again.
  VelTarn.savePlace = () => {
    // The entry may be another one already while the old view still stands.
    if (VelTarn.shownHash !== window.location.hash) return;
    const place = {scroll: window.scrollY, view: VelTarn.tellPlace ? VelTarn.tellPlace() : null};
    try {
      window.history.replaceState({...window.history.state, place}, '');
    } catch (error) {
      // Some browsers allow so many changes in half a minute only; a later one is taken again.
    }
  };

  const RestingTime = 200;  // Milliseconds after the last movement.
  let restTimer = 0;

  VelTarn.placeChanged = () => {
    window.clearTimeout(restTimer);
    restTimer = window.setTimeout(VelTarn.savePlace, RestingTime);
  };

  /// Keeps places from now on: at rest, and before a click leads away.
  VelTarn.followPlaces = () => {
    window.history.scrollRestoration = 'manual';  // Views are drawn too late for the browser.
    document.addEventListener('scroll', VelTarn.placeChanged, {capture: true, passive: true});
    document.addEventListener('input', VelTarn.placeChanged, true);
    document.addEventListener('click', VelTarn.savePlace, true);
  };

  /// Writes what was chosen into the address line without a step for the back button: typing a
  /// filter is no journey. The view has already shown it.
  VelTarn.keepChoices = (choices) => {
    const route = VelTarn.currentRoute();
    const hash = VelTarn.address(route.path, {...route.choices, ...choices});
    if (hash === window.location.hash) return;
    VelTarn.shownHash = hash;
    window.location.replace(hash);
    VelTarn.placeChanged();  // The replaced entry has lost it.
  };
}());
