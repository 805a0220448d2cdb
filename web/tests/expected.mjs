// What the result files say, read from the XML files beside the pages by plain patterns: another
// source than the pages', and another way.
import {readFileSync} from 'node:fs';

const field = (text, name) => {
  const found = new RegExp('<' + name + '>([^<]*)</' + name + '>').exec(text);
  return found ? found[1] : null;
};

const all = (text, pattern) => Array.from(text.matchAll(pattern), (found) => found.slice(1));

/// A file as the pages show it: UTF-8 where it is, else Latin-1, byte by byte.
const readText = (path) => {
  const bytes = readFileSync(path);
  const text = bytes.toString('utf8');
  return text.includes('\ufffd') ? bytes.toString('latin1') : text;
};

const FailureModes = /<(\w+) ID="(-?\d+)"><Name>([^<]*)<\/Name><ShortName>([^<]*)<\/ShortName>(.*?)<\/\1>/g;
const Effects = /<Effect ID="(-?\d+)"><Name>([^<]*)<\/Name><SinglePointFailure>(\w+)</g;

function readComponent(text) {
  return all(text, FailureModes).map(([type, id, name, shortName, rest]) => {
    const effects = all(rest, Effects);
    const ofKind = (kind) => effects.filter((effect) => effect[2] === kind)
        .map(([effectId, effectName]) => ({id: effectId, name: effectName}));
    return {type, id, name, shortName, component: field(text, 'Name'), description: field(rest, 'Description'),
      unavailability: field(rest, 'Unavailability'), frequency: field(rest, 'Frequency'),
      direct: ofKind('true'), further: ofKind('false')};
  });
}

const readOrder = (text) => text.split('<CutSet>').slice(1).map((set) => ({
  order: Number(/^(\d+)/.exec(text)[1]), unavailability: field(set, 'Unavailability'),
  frequency: field(set, 'Frequency'), sort: field(set, 'UnavailabilitySort'),
  events: all(set, /<Event ID="(-?\d+)"/g).map(([id]) => id)}));

function readTree(folder, text) {
  const id = /^-?\d+/.exec(text)[0];
  const head = text.split('<TopNode>')[0];
  const logic = text.slice(head.length).split('<CutSetsSummary>')[0];
  const cutSets = readText(folder + '/CutSets(' + id + ').xml').split('<AllCutSets>')[1] || '';
  return {id, name: field(head, 'Name'), description: field(head, 'Description'),
    unavailability: field(head, 'Unavailability'), sort: field(head, 'UnavailabilitySort'),
    frequency: field(head, 'Frequency'), severity: field(head, 'Severity'), sil: field(head, 'SIL'),
    gates: (logic.match(/<(And|Or|Not) ID=/g) || []).length,
    used: all(logic, /<Event ID="(-?\d+)"/g).map(([event]) => event),
    orders: all(text, /<CutSets order="(\d+)" pruned="false">(\d+)</g),
    cutSets: cutSets.split('<CutSets order="').slice(1).flatMap(readOrder)};
}

/// {trees, events, warnings} of a result folder that has XML files and pages.
export function readExpected(folder) {
  const xml = readText(folder + '/FaultTrees.xml');
  const fmea = (/<FMEA>(.*)<\/FMEA>/s.exec(xml) || ['', ''])[1];
  const trees = xml.split('</FMEA>').pop().split('<FaultTree ID="').slice(1);
  return {trees: trees.map((text) => readTree(folder, text)),
    events: fmea.split('<Component>').slice(1).flatMap(readComponent),
    warnings: all(xml, /<Warning>([^<]*)</g).map(([text]) => text)};
}
