// Every view of results of the program opens, and the overview has the figures of the XML files.
import assert from 'node:assert/strict';
import {existsSync, readFileSync} from 'node:fs';
import {basename, join} from 'node:path';
import {check, finish, resultFolders, show, withBrowser} from './browser.mjs';
import {readExpected} from './expected.mjs';

const given = (text) => (text === null || text === '-1' ? '\u2013' : text);

async function checkView(page, hash, body) {
  await check(hash + ' opens', async () => {
    await show(page, hash);
    assert.equal(await page.locator('.problem').count(), 0);
    await body();
  });
}

async function checkTree(page, tree) {
  const address = '#/tree/' + tree.id;
  await checkView(page, address, async () => {
    assert.equal(await page.textContent('h1'), tree.name);
    assert.equal(await page.textContent('.figures dd'), tree.unavailability);
  });
  for (const form of ['drawing .node', 'outline .line']) {
    const [name, nodes] = form.split(' ');
    await checkView(page, address + '/' + name, async () =>
      assert.ok(await page.locator(nodes).count() > 1, 'the tree shows nothing below its top'));
  }
  await checkView(page, address + '/cutsets', async () => {
    const count = tree.cutSets.length;
    assert.equal(await page.textContent('.count'), count + ' of ' + count + ' cut sets');
  });
}

const folders = resultFolders();
await withBrowser(async (open) => {
  for (const folder of folders) {
    console.log(basename(folder));
    const {trees, events, warnings} = readExpected(folder);
    await check('the folder holds every file that the start page names', () => {
      const index = readFileSync(folder + '/Index.html', 'latin1');
      const names = Array.from(index.matchAll(/(?:src=|href=|@import )"([^"]+)"/g), ([, name]) => name);
      assert.ok(names.length > 20, String(names.length));
      assert.deepEqual(names.filter((name) => !existsSync(join(folder, name))), []);
    });
    const page = await open(folder);
    await check('the overview has the figures of every top event', async () => {
      const rows = await page.locator('.overview tbody tr').evaluateAll((list) => list.map((row) =>
        [row.querySelector('a').textContent, ...Array.from(row.cells).slice(1, 6).map((cell) => cell.textContent)]));
      assert.deepEqual(rows.sort(), trees.map((tree) => [tree.name, given(tree.unavailability), given(tree.frequency),
        given(tree.severity), given(tree.sil), String(tree.cutSets.length)]).sort());
    });
    for (const tree of trees) await checkTree(page, tree);
    await checkView(page, '#/fmea', async () =>
      assert.equal(await page.locator('.fmea tbody tr').count(), events.length));
    await checkView(page, '#/warnings', async () =>
      assert.equal(await page.locator('.warnings li').count(), warnings.length));
    await check('nothing is reported as an error', () => assert.deepEqual(page.errors, []));
    await page.context().close();
  }
});
finish();
