// Result folders of the tests' own: a real one with other data in it.
import {cpSync, mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {join} from 'node:path';

const Header = '<?xml version="1.0" encoding="iso-8859-1" ?><Vel-Tarn_Results model="made" ' +
    'build="Internal" majorVersion="2" minorVersion="5" version="901" versionDate="17 October 2022">';

const ScriptLine = (source) =>
  '<script type="text/javascript" language="JavaScript" src="' + source + '"></script>\n';

/// A copy of the folder whose scripts hold these trees, and `after` behind them; all bytes go out in
/// Latin-1. `scripts` are scripts of the model with a text of their own, or with none at all: null.
/// Gives the folder to the body and removes it.
export async function withResult(folder, {trees, cutSets, after = '', scripts = {}}, body) {
  const made = mkdtempSync(join(tmpdir(), 'result-pages-'));
  try {
    cpSync(folder + '/FTOutput', made + '/FTOutput', {recursive: true});
    mkdirSync(made + '/model');
    writeFileSync(made + '/model/FaultTrees.js', 'var FaultTrees = \'' + Header + '<FaultTrees>' + trees +
        '</FaultTrees>' + after + '</Vel-Tarn_Results>\';', 'latin1');
    let lines = '';
    for (const [id, text] of Object.entries(cutSets)) {
      writeFileSync(made + '/model/CutSets_' + id + '.js', 'var CutSets_' + id + ' = \'' + Header +
          '<FaultTrees>' + text + '</FaultTrees></Vel-Tarn_Results>\';', 'latin1');
      lines += ScriptLine('model/CutSets_' + id + '.js');
    }
    for (const [name, text] of Object.entries(scripts)) {
      if (text !== null) writeFileSync(made + '/model/' + name + '.js', text, 'latin1');
      else rmSync(made + '/model/' + name + '.js', {force: true});
      if (name !== 'FaultTrees' && !(name.slice('CutSets_'.length) in cutSets)) lines += ScriptLine('model/' + name + '.js');
    }
    const index = readFileSync(folder + '/Index.html', 'latin1').replace(/<script.*CutSets_.*\n/g, '')
        .replace(ScriptLine('model/FaultTrees.js'), (line) => line + lines);
    writeFileSync(made + '/Index.html', index, 'latin1');
    await body(made);
  } finally {
    rmSync(made, {recursive: true});
  }
}

export const event = (id, name, {description = '', effects = '', unavailability = '0.001'} = {}) =>
  '<BasicEvent ID="' + id + '"><Name>' + name + '</Name><ShortName>' + name + '</ShortName><Description>' +
  description + '</Description><Unavailability>' + unavailability + '</Unavailability><Frequency>0' +
  '</Frequency><Effects>' + effects + '</Effects></BasicEvent>';

export const component = (name, events) =>
  '<Component><Name>' + name + '</Name><Events>' + events + '</Events></Component>';

export const tree = (id, name, {description = '', top = '', summary = '', cutSets = '',
  unavailability = '0.5'} = {}) =>
  '<FaultTree ID="' + id + '"><Name>' + name + '</Name><Description>' + description + '</Description>' +
  '<Unavailability>' + unavailability + '</Unavailability><Frequency>1e-06</Frequency>' +
  '<UnavailabilitySort>' + unavailability + '</UnavailabilitySort><Severity>5</Severity>' +
  (top ? '<TopNode>' + top + '</TopNode>' : '') +
  (summary ? '<CutSetsSummary>' + summary + '</CutSetsSummary>' : '') +
  (cutSets ? '<AllCutSets>' + cutSets + '</AllCutSets>' : '') + '</FaultTree>';

export const gate = (type, id, name, inputs) =>
  '<' + type + ' ID="' + id + '"><Name>' + name + '</Name><Children>' + inputs + '</Children></' + type + '>';

export const use = (id) => '<Event ID="' + id + '" />';

export const cutSet = (unavailability, ids) =>
  '<CutSet><Unavailability>' + unavailability + '</Unavailability><Frequency>0</Frequency>' +
  '<UnavailabilitySort>' + unavailability + '</UnavailabilitySort><Events>' + ids.map(use).join('') +
  '</Events></CutSet>';

/// The allocations of safety levels as the writer puts them behind the trees.
export const allocations = (list) => '<SafetyAllocations><ModelFileName>made</ModelFileName><Objectives>' +
  '<Objective><Name>ASILCost</Name></Objective></Objectives><Population>' + list.map(({id, cost, nodes}) =>
  '<Individual><IndividualID>' + id + '</IndividualID><Encoding><TreeASILEncoding>' + nodes +
  '</TreeASILEncoding></Encoding><Evaluations><Evaluation><Name>ASILCost</Name><Value>' + cost +
  '</Value></Evaluation></Evaluations></Individual>').join('') + '</Population></SafetyAllocations>';

/// One component of an allocation with pairs of event and level, and the components inside it.
export const encodingNode = (name, levels, inside = '') => '<EncodingNode><Component><ShortName>' +
  name.split('.').pop() + '</ShortName><FullName>' + name + '</FullName></Component><BasicEvents>' +
  levels.map(([event, level], index) => '<BasicEvent><Name>' + event + '</Name><ID>' + (index + 2) +
  '</ID><SafetyRequirement>' + level + '</SafetyRequirement></BasicEvent>').join('') +
  '</BasicEvents><SubNodes>' + inside + '</SubNodes></EncodingNode>';
