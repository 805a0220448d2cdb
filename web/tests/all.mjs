// All tests on the folders named on the command line. Three results of analyses are looked at in every
// detail, the others only as far as that every view opens; the result of a search has tests of its own.
import {spawnSync} from 'node:child_process';
import {basename, dirname, join} from 'node:path';
import {fileURLToPath} from 'node:url';

// One with redundant channels, one with states, and one with negated events.
const InDetail = ['brake-by-wire', 'drone-flight-controller', 'silent-alarm'];

const here = dirname(fileURLToPath(import.meta.url));
const isSearch = (folder) => folder.endsWith('-OptimisationResults');
const folders = process.argv.slice(2).filter((folder) => !isSearch(folder));
const searches = process.argv.slice(2).filter(isSearch);
const isDetailed = (folder) => InDetail.some((name) => basename(folder).startsWith(name + '-'));
const detailed = folders.filter(isDetailed);
if (detailed.length !== InDetail.length || searches.length !== 1) {
  console.error('usage: node all.mjs <folder with Index.html>... <folder of a search>; needed are ' +
      InDetail.join(', '));
  process.exit(2);
}
const [first] = detailed;
const runs = [['views.mjs', ...detailed], ['smoke.mjs', ...folders.filter((folder) => !isDetailed(folder))],
  ['access.mjs', first], ['made.mjs', first], ['names.mjs', first], ['journey.mjs', first],
  ['large.mjs', first], ['designs.mjs', ...searches], ['searches.mjs', ...searches]];
const failed = runs.filter(([script, ...rest]) => {
  console.log(script);
  return spawnSync(process.execPath, [join(here, script), ...rest], {stdio: 'inherit'}).status !== 0;
});
process.exit(failed.length === 0 ? 0 : 1);
