// Pictures of every view, to be looked at.
//   node screenshots.mjs <folder for the pictures> <folder with Index.html>...
//   node screenshots.mjs --docs <folder for the pictures> <folder with Index.html>
// The second form makes the pictures of the documentation.
import {mkdirSync} from 'node:fs';
import {basename, join} from 'node:path';
import {show, withBrowser} from './browser.mjs';
import {readExpected} from './expected.mjs';

const Settings = [{width: 1280, scheme: 'light'}, {width: 1280, scheme: 'dark'},
  {width: 360, scheme: 'light'}, {width: 360, scheme: 'dark'}];

const viewsOf = (tree) => [['overview', '#/'], ['top-event', '#/tree/' + tree.id],
  ['drawing', '#/tree/' + tree.id + '/drawing'], ['outline', '#/tree/' + tree.id + '/outline'],
  ['cut-sets', '#/tree/' + tree.id + '/cutsets'], ['fmea', '#/fmea'],
  ['allocations', '#/allocations'], ['warnings', '#/warnings']];

async function takeAll(open, target, folder) {
  const {trees} = readExpected(folder);
  const model = basename(folder).replace(/-FMEAOutput$/, '');
  for (const setting of Settings) {
    const page = await open(folder, '', setting);
    for (const [name, hash] of viewsOf(trees[0])) {
      await show(page, hash);
      await page.waitForTimeout(100);  // For pictures only: what is drawn late is in them, too.
      await page.screenshot({fullPage: true, path: join(target,
          [model, name, setting.scheme, setting.width].join('-') + '.png')});
    }
    await page.context().close();
  }
}

/// The top of three views as a reader of the documentation wants to see them.
async function takeForDocs(open, target, folder) {
  const {trees: [tree]} = readExpected(folder);
  // The heights end between two rows.
  const pictures = [['overview', '#/', 420], ['drawing', '#/tree/' + tree.id + '/drawing', 770],
    ['cut-sets', '#/tree/' + tree.id + '/cutsets', 692]];
  const page = await open(folder);
  for (const [name, hash, height] of pictures) {
    await show(page, hash);
    await page.waitForTimeout(100);
    await page.screenshot({path: join(target, 'result-pages-' + name + '.png'),
      clip: {x: 0, y: 0, width: 1280, height}});
  }
}

const words = process.argv.slice(2);
const forDocs = words[0] === '--docs';
const [target, ...folders] = forDocs ? words.slice(1) : words;
mkdirSync(target, {recursive: true});
await withBrowser(async (open) => {
  for (const folder of folders) await (forDocs ? takeForDocs : takeAll)(open, target, folder);
});
