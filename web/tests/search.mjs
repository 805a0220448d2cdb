// Results of searches of the tests' own: the page of a real one with other designs behind it.
import {cpSync, mkdtempSync, readFileSync, readdirSync, rmSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {join} from 'node:path';

const Declaration = '<?xml version="1.0" encoding="iso-8859-1" ?>\n';

/// As the program puts a text into a script.
const inScript = (variable, xml) => 'var ' + variable + ' = \'' +
    xml.replace(/[\\']/g, '\\$&').replace(/\n/g, '\\n').replace(/\r/g, '\\r') + '\';\n';

/// The page of a search in the folder.
export const pageOf = (folder) => readdirSync(folder).find((name) => name.endsWith('.html'));

/// A folder with the page of the real one under the name of the run, and scripts with these texts; a text that
/// is null has no script. All bytes go out in Latin-1. Gives the path of the page to the body and removes
/// the folder.
export async function withSearch(folder, {state, model = null, run = 'run', scripts = {}}, body) {
  const made = mkdtempSync(join(tmpdir(), 'search-pages-'));
  try {
    cpSync(folder + '/FTOutput', made + '/FTOutput', {recursive: true});
    const page = pageOf(folder);
    const html = readFileSync(join(folder, page), 'latin1').replaceAll(page.replace(/\.html$/, ''), () => run);
    const name = Buffer.from(run, 'latin1').toString('utf8').includes('\ufffd') ? run :
        Buffer.from(run, 'latin1').toString('utf8');
    writeFileSync(join(made, name + '.html'), html, 'latin1');
    const files = {...(state === null ? {} : {'.js': inScript('OptimisationResults', Declaration + state)}),
      ...(model === null ? {} : {'-Model.js': inScript('OptimisationModel', Declaration + model)}), ...scripts};
    for (const [ending, text] of Object.entries(files)) writeFileSync(join(made, name + ending), text, 'latin1');
    await body(join(made, name + '.html'));
  } finally {
    rmSync(made, {recursive: true});
  }
}

const list = (values, text) => values.map(text).join('');

/// One design; `values` are pairs of objective and text.
export const individual = ({id, encoding, values, altered = 1}) => '<Individual><IndividualID>' + id +
  '</IndividualID><Encoding>' + encoding + '</Encoding><Evaluations>' + list(Object.entries(values),
      ([name, value]) =>
  '<Evaluation><Name>' + name + '</Name><Value>' + value + '</Value></Evaluation>') +
      '</Evaluations><LastAlteredGeneration>' +
  altered + '</LastAlteredGeneration></Individual>';

export const fixed = (choices) => '<FixedEncoding>' + list(Object.entries(choices), ([name, implementations]) =>
  '<EncodingNode><Component><Name>' + name + '</Name></Component><Implementations>' + list(implementations,
      ([implementation, index]) =>
  '<Implementation><Name>' + implementation + '</Name><Index>' + index + '</Index></Implementation>') +
  '</Implementations></EncodingNode>') + '</FixedEncoding>';

export const treeNode = (name, implementation, {allocation = '', inside = ''} = {}) =>
    '<EncodingNode><Component><Name>' + name +
  '</Name><Implementation><Name>' + implementation + '</Name><Index>0</Index></Implementation></Component>' +
  (allocation ? '<Allocation>' + allocation + '</Allocation>' : '') + '<SubNodes>' + inside +
      '</SubNodes></EncodingNode>';

export const tree = (nodes) => '<TreeEncoding>' + nodes + '</TreeEncoding>';

/// Rows of event text, short name, prime and level.
export const fixedLevels = (rows) => '<FixedASILEncoding>' + list(rows, ([whole, short, prime, level]) =>
    '<EncodingNode><Component><BasicEvent>' +
  short + '</BasicEvent><Name>' + whole + '</Name><ID>' + prime + '</ID><SafetyRequirement>' + level +
  '</SafetyRequirement></Component></EncodingNode>') + '</FixedASILEncoding>';

/// One component with rows of event, prime and level.
export const levelNode = (name, rows, inside = '') => '<EncodingNode><Component><ShortName>' +
    name.split('.').pop() +
  '</ShortName><FullName>' + name + '</FullName></Component><BasicEvents>' +
      list(rows, ([event, prime, level]) => '<BasicEvent><Name>' +
  event + '</Name><ID>' + prime + '</ID><SafetyRequirement>' + level + '</SafetyRequirement></BasicEvent>') +
  '</BasicEvents><SubNodes>' + inside + '</SubNodes></EncodingNode>';

export const treeLevels = (nodes) => '<TreeASILEncoding>' + nodes + '</TreeASILEncoding>';

const population = (designs) => '<NonDominatedPopulation>' + list(designs, individual) + '</NonDominatedPopulation>';

function stateOf(kind, {file = 'made.xml', objectives, encoding = 'FixedEncoding', time = '12.5', generation = 7},
    inside) {
  return '<Vel-Tarn_Results model="made" build="Internal" majorVersion="2" minorVersion="5" version="901" versionDate="17 October 2022"><' +
    kind + '><ModelFileName>' + file + '</ModelFileName><RandomSeed>4711</RandomSeed><Generation>' +
        generation + '</Generation><EncodingType>' +
    encoding + '</EncodingType><TimeElapsed>' + time + '</TimeElapsed><Objectives>' +
        list(Object.entries(objectives), ([name, goal]) =>
    '<Objective><Name>' + name + '</Name><Goal>' + goal + '</Goal></Objective>') + '</Objectives>' + inside +
        '</' + kind + '></Vel-Tarn_Results>';
}

/// The state of a search for several objectives: the first frontier, the others, and the archive.
export const nsga = (about, [first, ...others], archive = []) => stateOf('NSGA', about, population(first) +
  '<OtherNonDominatedPopulations>' + list(others, population) + '</OtherNonDominatedPopulations>' +
  (archive.length > 0 ? '<ArchiveNonDominatedPopulations>' + population(archive) +
      '</ArchiveNonDominatedPopulations>' : ''));

/// The state of a search with one population.
export const coitGA = (about, designs) => stateOf('CoitGA', about, '<Population>' + list(designs, individual) +
    '</Population>');

/// The second script: bounds of objectives as [lower, upper], null for none, and hazards as
/// {name, level, cutSets: [[[prime, name], ...], ...]}.
export const modelOf = (bounds, hazards = null) => '<OptimisationModel><Objectives>' +
    list(Object.entries(bounds), ([name, [lower, upper]]) =>
  '<Objective><Name>' + name + '</Name><Goal>Minimise</Goal>' + (lower === null ? '' : '<LowerBound>' + lower +
      '</LowerBound>') +
  (upper === null ? '' : '<UpperBound>' + upper + '</UpperBound>') + '</Objective>') + '</Objectives>' +
  (hazards ? '<Hazards>' + list(hazards, ({name, level, cutSets}) => '<Hazard><Name>' + name + '</Name><SIL>' +
      level + '</SIL><CutSets>' +
  list(cutSets, (events) => '<CutSet>' + list(events, ([prime, event]) => '<Event ID="' + prime + '">' + event +
      '</Event>') + '</CutSet>') +
  '</CutSets></Hazard>') + '</Hazards>' : '') + '</OptimisationModel>';
