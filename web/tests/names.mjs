// Texts of a model are data, whatever they hold; and a result that cannot be read says why.
import assert from 'node:assert/strict';
import {readFileSync, rmSync, writeFileSync} from 'node:fs';
import {check, finish, resultFolders, withBrowser} from './browser.mjs';
import * as make from './model.mjs';

const [folder] = resultFolders();

/// A result with one top event over one event of the given names.
function result(treeName, eventName, description = '') {
  const effect = '<Effect ID="9"><Name>' + treeName + '</Name><SinglePointFailure>true</SinglePointFailure></Effect>';
  const fmea = '<FMEA>' + make.component('Unit', make.event(1, eventName, {description, effects: effect})) +
      '</FMEA>';
  return {
    trees: make.tree(9, treeName, {description, top: make.gate('Or', 9, treeName, make.use(1)),
      summary: '<CutSets order="1" pruned="false">1</CutSets>'}),
    cutSets: {9: fmea + make.tree(9, treeName,
        {cutSets: '<CutSets order="1">' + make.cutSet('0.5', ['1']) + '</CutSets>'})},
  };
}

/// Bytes written as the characters that Latin-1 has for them.
const utf8 = (text) => Buffer.from(text, 'utf8').toString('latin1');

const Names = [
  ['markup', '<script>window.ran = true</script>', null],
  ['an image that runs', '<img src=x onerror="window.ran = true">', null],
  ['an ampersand', 'Valve A & B', null],
  ['what looks like an entity', 'x &lt; y &unknown;', null],
  ['comparison signs', 'p < 3 and q > 4', null],
  ['double quotes', 'so called "safe" state', null],
  ['Latin-1 letters', 'Druckbeh\u00e4lter gr\u00f6\u00dfer', null],
  ['UTF-8 letters', utf8('Druckbeh\u00e4lter \u2264 5 \u03a9'), 'Druckbeh\u00e4lter \u2264 5 \u03a9'],
  ['a negation sign before UTF-8 letters', '\xac' + utf8('\u00d6ldruck'), '\u00ac\u00d6ldruck'],
  ['a negation sign', '\xacfire', '\u00acfire'],
];

await withBrowser(async (open) => {
  for (const [what, bytes, text] of Names) {
    const expected = text || bytes;
    await make.withResult(folder, result(bytes, bytes, bytes), async (made) => {
      await check('a name with ' + what + ' is shown as it is', async () => {
        const page = await open(made);
        assert.equal(await page.textContent('.overview tbody .name a'), expected);
        await page.click('.overview tbody .name a');
        await page.waitForSelector('.lead');
        assert.equal(await page.textContent('h1'), expected);
        assert.equal(await page.textContent('.lead'), expected);
        await page.click('[data-focus="tab-Cut sets"]');
        assert.equal(await page.textContent('.event-line'), expected);
        await page.click('[data-focus="tab-Fault tree"]');
        assert.equal(await page.textContent('.details h2'), expected);
        assert.equal(await page.evaluate(() => window.ran), undefined);
        assert.deepEqual(page.errors, []);
        await page.context().close();
      });
    });
  }

  for (const charset of ['utf-8', 'shift_jis']) {
    for (const [bytes, text] of [['\xacgr\u00f6\u00dfer', '\u00acgr\u00f6\u00dfer'], [utf8('\u2264 5'), '\u2264 5']]) {
      await make.withResult(folder, result(bytes, bytes), async (made) => {
        const index = readFileSync(made + '/Index.html', 'latin1');
        writeFileSync(made + '/Index.html', index.replace('<head>', '<head><meta charset="' + charset + '">'));
        await check('the name ' + text + ' survives a browser that takes ' + charset, async () => {
          const page = await open(made);
          assert.equal(await page.textContent('.overview tbody .name a'), text);
        });
      });
    }
  }

  const sound = result('Top', 'stuck');
  await make.withResult(folder, result('It\'s late', 'stuck'), async (made) => {
    await check('an apostrophe in the trees is named as the cause on the page', async () => {
      const page = await open(made);
      assert.match(await page.textContent('.problem'), /model\/FaultTrees\.js is there, .*apostrophe/);
    });
  });
  await make.withResult(folder, sound, async (made) => {
    writeFileSync(made + '/model/CutSets_9.js', 'var CutSets_9 = \'it\'s broken\';');
    await check('broken cut sets leave the overview readable and are named', async () => {
      const page = await open(made);
      assert.match(await page.textContent('.problem'), /model\/CutSets_9\.js is there, .*apostrophe/);
      assert.equal(await page.textContent('.overview tbody .name a'), 'Top');
      await page.evaluate(() => { location.hash = '#/tree/9'; });
      await page.waitForSelector('.figures');
    });
  });
  await make.withResult(folder, sound, async (made) => {
    rmSync(made + '/model/FaultTrees.js');
    await check('a missing script is told from a broken one', async () => {
      const page = await open(made);
      assert.match(await page.textContent('.problem'), /model\/FaultTrees\.js is missing/);
    });
  });
  await make.withResult(folder, result('Top</Name>', 'stuck'), async (made) => {
    await check('a name that closes an element of the file is named as the cause', async () => {
      const page = await open(made);
      assert.match(await page.textContent('.problem'), /model\/FaultTrees\.js is not well formed/);
    });
  });
  await make.withResult(folder, {trees: '', cutSets: {}}, async (made) => {
    await check('a result without top events says so', async () => {
      const page = await open(made);
      assert.match(await page.textContent('.empty'), /no fault trees/);
      await page.click('[data-focus=menu-fmea]');
      await page.waitForSelector('h1:text-is("Failure modes and effects")');
      assert.match(await page.textContent('.empty'), /no failure modes/);
      assert.deepEqual(page.errors, []);
    });
  });
  await make.withResult(folder, sound, async (made) => {
    await check('an address of nothing leads back to the overview', async () => {
      const page = await open(made, '#/nowhere');
      await page.click('text=Go to the overview');
      await page.waitForSelector('.overview');
      assert.deepEqual(page.errors, []);
    });
  });
});
finish();
