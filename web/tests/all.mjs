// All tests on the folders named on the command line. Three of them are looked at in every detail,
// the others only as far as that every view opens.
import {spawnSync} from 'node:child_process';
import {basename, dirname, join} from 'node:path';
import {fileURLToPath} from 'node:url';

// One with redundant channels, one with states, and one with negated events.
const InDetail = ['brake-by-wire', 'drone-flight-controller', 'silent-alarm'];

const here = dirname(fileURLToPath(import.meta.url));
const folders = process.argv.slice(2);
const isDetailed = (folder) => InDetail.some((name) => basename(folder).startsWith(name + '-'));
const detailed = folders.filter(isDetailed);
if (detailed.length !== InDetail.length) {
  console.error('usage: node all.mjs <folder with Index.html>...; needed are ' + InDetail.join(', '));
  process.exit(2);
}
const [first] = detailed;
const runs = [['views.mjs', ...detailed], ['smoke.mjs', ...folders.filter((folder) => !isDetailed(folder))],
  ['access.mjs', first], ['made.mjs', first], ['names.mjs', first], ['journey.mjs', first],
  ['large.mjs', first]];
const failed = runs.filter(([script, ...rest]) => {
  console.log(script);
  return spawnSync(process.execPath, [join(here, script), ...rest], {stdio: 'inherit'}).status !== 0;
});
process.exit(failed.length === 0 ? 0 : 1);
