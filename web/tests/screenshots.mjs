// Pictures of every view, to be looked at.
//   node screenshots.mjs <folder for the pictures> <folder with Index.html or of a search>...
//   node screenshots.mjs --docs <folder for the pictures> <folder with Index.html> [<folder of a search>]
// The second form makes the pictures of the documentation.
import {mkdirSync} from 'node:fs';
import {basename, join} from 'node:path';
import {show, withBrowser} from './browser.mjs';
import {readExpected} from './expected.mjs';
import {pageOf} from './search.mjs';

const Settings = [{width: 1280, scheme: 'light'}, {width: 1280, scheme: 'dark'},
  {width: 360, scheme: 'light'}, {width: 360, scheme: 'dark'}];

const viewsOf = (tree) => [['overview', '#/'], ['top-event', '#/tree/' + tree.id],
  ['drawing', '#/tree/' + tree.id + '/drawing'], ['outline', '#/tree/' + tree.id + '/outline'],
  ['cut-sets', '#/tree/' + tree.id + '/cutsets'], ['fmea', '#/fmea'],
  ['allocations', '#/allocations'], ['warnings', '#/warnings']];

const isSearch = (folder) => folder.endsWith('-OptimisationResults');

/// The views of a search with the cheapest design and the one that comes last in the list.
async function viewsOfSearch(open, path) {
  const page = await open(path);
  const key = async (row) => (await page.textContent('.designs .row' + row + ' .design-link')).split(' ')[1];
  const [first, other] = [await key(':first-child'), await key(':last-child')];
  await page.context().close();
  return [['designs', '#/'], ['plot', '#/plot'], ['parallel', '#/parallel'], ['design', '#/design/' + first],
    ['compare', '#/compare/' + first + '/' + other]];
}

async function takeAll(open, target, folder) {
  const path = isSearch(folder) ? join(folder, pageOf(folder)) : folder;
  const views = isSearch(folder) ? await viewsOfSearch(open, path) : viewsOf(readExpected(folder).trees[0]);
  const model = basename(folder).replace(/-(FMEAOutput|OptimisationResults)$/, '');
  for (const setting of Settings) {
    const page = await open(path, '', setting);
    for (const [name, hash] of views) {
      await show(page, hash);
      await page.waitForTimeout(100);  // For pictures only: what is drawn late is in them, too.
      await page.screenshot({fullPage: true, path: join(target,
          [model, name, setting.scheme, setting.width].join('-') + '.png')});
    }
    await page.context().close();
  }
}

/// The front of a search, down to what its marks mean.
async function takeFront(open, target, folder) {
  const page = await open(join(folder, pageOf(folder)), '#/plot');
  const frame = await page.locator('.plot-frame').boundingBox();
  await page.screenshot({fullPage: true, path: join(target, 'search-pages-front.png'),
    clip: {x: 0, y: 0, width: 1280, height: Math.ceil(frame.y + frame.height + 16)}});
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
  for (const folder of folders) {
    if (forDocs) await (isSearch(folder) ? takeFront : takeForDocs)(open, target, folder);
    else await takeAll(open, target, folder);
  }
});
