// Large results: what is not in view has no elements. Counts are checked, not times, because they
// are the same on every machine.
import assert from 'node:assert/strict';
import {check, finish, resultFolders, withBrowser} from './browser.mjs';
import * as make from './model.mjs';

const CutSetCount = 100000;
const NodeCount = 5000;
const MostElements = 600;  // In the whole page.

const [folder] = resultFolders();
const list = (count, text) => Array.from({length: count}, (_, index) => text(index)).join('');

const eventCount = 500;
const events = list(eventCount, (index) => make.event(index + 1, 'Unit' + index + '.stuck'));
const fmea = '<FMEA>' + make.component('Plant', events) + '</FMEA>';
const pairOf = (index) =>
  [index % eventCount + 1, (index % eventCount + 1 + Math.floor(index / eventCount)) % eventCount + 1];
const pairs = list(CutSetCount, (index) =>
  make.cutSet(((index * 7919) % CutSetCount + 1) / 1e9, pairOf(index)));

// 10 gates of 10 gates of 49 events: 1 + 10 + 100 + 4,900 nodes.
const logic = make.gate('Or', 1000, 'Top', list(10, (outer) => make.gate('And', 1001 + outer,
    'Section ' + outer, list(10, (inner) => make.gate('Or', 2000 + outer * 10 + inner,
        'Part ' + outer + '.' + inner, list(49, (leaf) => make.use((outer * 50 + inner * 5 + leaf) % eventCount + 1)))))));

const result = {
  trees: make.tree(1000, 'Large', {top: logic, summary:
      '<CutSets order="2" pruned="false">' + CutSetCount + '</CutSets>'}),
  cutSets: {1000: fmea + make.tree(1000, 'Large', {cutSets: '<CutSets order="2">' + pairs + '</CutSets>'})},
};

const elements = (page) => page.evaluate(() => document.querySelectorAll('*').length);

await make.withResult(folder, result, (made) => withBrowser(async (open) => {
  const cutSets = await open(made, '#/tree/1000/cutsets');
  await check('100,000 cut sets are listed with few elements', async () => {
    assert.equal(await cutSets.textContent('.count'), CutSetCount + ' of ' + CutSetCount + ' cut sets');
    assert.ok(await elements(cutSets) < MostElements, String(await elements(cutSets)));
  });
  await check('the largest cut set comes first and the smallest is reached by scrolling', async () => {
    assert.match(await cutSets.textContent('.cut-sets .row:not(.group)'), /0\.0001/);
    await cutSets.evaluate(() => { document.querySelector('.row-box').scrollTop = 1e9; });
    await cutSets.waitForSelector('[aria-rowindex="' + (CutSetCount + 2) + '"]');
    assert.match(await cutSets.textContent('[aria-rowindex="' + (CutSetCount + 2) + '"]'), /1e-9/);
    assert.ok(await elements(cutSets) < MostElements, String(await elements(cutSets)));
  });
  await check('a filter narrows 100,000 cut sets', async () => {
    await cutSets.fill('input[type=search]', 'UNIT7.stuck');
    const unit = 8;  // The event that is called Unit7.stuck.
    const expected = Array.from({length: CutSetCount}, (_, index) => pairOf(index))
        .filter((pair) => pair.includes(unit)).length;
    assert.equal(await cutSets.textContent('.count'), expected + ' of ' + CutSetCount + ' cut sets');
  });

  const drawing = await open(made, '#/tree/1000/drawing');
  await check('a tree of 5,000 nodes opens with few elements', async () => {
    assert.ok(await drawing.locator('.node').count() > 5);
    assert.ok(await elements(drawing) < MostElements, String(await elements(drawing)));
  });
  await check('a tree of 5,000 nodes is drawn with few elements when all of it is open', async () => {
    await drawing.click('text=Open all');
    assert.ok(await elements(drawing) < MostElements, String(await elements(drawing)));
    await drawing.click('button:text-is("Fit")');
    const boxes = await drawing.evaluate(() =>
      document.querySelector('.sketch').getAttribute('d').split('M').length - 1);
    assert.ok(boxes >= NodeCount, String(boxes));
    assert.ok(await elements(drawing) < MostElements, String(await elements(drawing)));
  });
  const outline = await open(made, '#/tree/1000/outline');
  await check('an outline of 5,000 nodes has few elements when all of it is open', async () => {
    await outline.click('text=Open all');
    assert.ok(await elements(outline) < MostElements, String(await elements(outline)));
    await outline.focus('.outline');
    await outline.keyboard.press('End');
    assert.match(await outline.textContent('.line.chosen'), /stuck/);
  });
  await check('nothing is reported as an error', async () => {
    assert.deepEqual([...cutSets.errors, ...drawing.errors, ...outline.errors], []);
  });
}));
finish();
