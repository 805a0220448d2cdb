// All tests on the folders named on the command line; the first also lends its pages to the tests
// that bring data of their own.
import {spawnSync} from 'node:child_process';
import {dirname, join} from 'node:path';
import {fileURLToPath} from 'node:url';

const here = dirname(fileURLToPath(import.meta.url));
const folders = process.argv.slice(2);
const runs = [['views.mjs', ...folders], ['names.mjs', ...folders.slice(0, 1)],
  ['large.mjs', ...folders.slice(0, 1)]];
const failed = runs.filter(([script, ...rest]) =>
  spawnSync(process.execPath, [join(here, script), ...rest], {stdio: 'inherit'}).status !== 0);
process.exit(failed.length === 0 ? 0 : 1);
