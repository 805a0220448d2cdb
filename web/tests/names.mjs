// Texts of a model are data, whatever they hold; and a result that cannot be read says why.
import assert from 'node:assert/strict';
import {readFileSync, writeFileSync} from 'node:fs';
import {check, finish, resultFolders, savedText, show, withBrowser} from './browser.mjs';
import * as make from './model.mjs';

const [folder] = resultFolders();

/// A top event over one event for each pair of names, with ids from 9 and 1009 on.
function result(pairs, after = '') {
  const ids = pairs.map((names, index) => 9 + index);
  const effect = (name, index) =>
    '<Effect ID="' + ids[index] + '"><Name>' + name + '</Name><SinglePointFailure>true</SinglePointFailure></Effect>';
  const fmea = '<FMEA>' + make.component('Unit', pairs.map(([treeName, eventName, description = ''], index) =>
    make.event(1000 + ids[index], eventName, {description, effects: effect(treeName, index)})).join('')) + '</FMEA>';
  return {
    trees: pairs.map(([treeName, , description = ''], index) => make.tree(ids[index], treeName, {description,
      top: make.gate('Or', ids[index], treeName, make.use(1000 + ids[index])),
      summary: '<CutSets order="1" pruned="false">1</CutSets>'})).join(''),
    cutSets: Object.fromEntries(pairs.map(([treeName], index) => [ids[index], fmea + make.tree(ids[index], treeName,
        {cutSets: '<CutSets order="1">' + make.cutSet('0.5', [1000 + ids[index]]) + '</CutSets>'})])),
    after,
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
  ['what an address means something by', 'a/b?c=d#e%20f', null],
  ['Latin-1 letters', 'Druckbeh\u00e4lter gr\u00f6\u00dfer', null],
  ['UTF-8 letters', utf8('Druckbeh\u00e4lter \u2264 5 \u03a9'), 'Druckbeh\u00e4lter \u2264 5 \u03a9'],
  ['a negation sign before UTF-8 letters', '\xac' + utf8('\u00d6ldruck'), '\u00ac\u00d6ldruck'],
  ['a negation sign', '\xacfire', '\u00acfire'],
];

async function checkNames(open) {
  const bytes = Names.map(([, text]) => text);
  const warnings = '<WarningList>' + bytes.map((text) => '<Warning>' + text + '</Warning>').join('') + '</WarningList>';
  await make.withResult(folder, result(bytes.map((text) => [text, text, text]), warnings), async (made) => {
    const page = await open(made);
    const texts = (selector) => page.locator(selector).allTextContents();
    const expected = Names.map(([, text, shown]) => shown || text);
    await check('names and warnings with signs of all kinds are listed as they are', async () => {
      assert.deepEqual(await texts('.overview tbody .name a'), expected);
      await show(page, '#/fmea');
      assert.deepEqual(await texts('.fmea tbody .name > a'), expected);
      assert.deepEqual(await texts('.fmea tbody li a:first-child'), expected);
      await show(page, '#/warnings');
      assert.deepEqual(await texts('.warnings li'), expected);
    });
    for (const [index, [what]] of Names.entries()) {
      await check('a name with ' + what + ' is shown as it is', async () => {
        const name = expected[index];
        await show(page, '#/tree/' + (9 + index));
        assert.equal(await page.textContent('h1'), name);
        assert.equal(await page.textContent('.lead'), name);
        await page.click('[data-focus="tab-Cut sets"]');
        await page.waitForSelector('.cut-sets');
        assert.equal(await page.textContent('.event-line'), name);
        await page.fill('input[type=search]', name);
        assert.equal(await page.textContent('.count'), '1 of 1 cut sets');
        await page.click('[data-focus="tab-Fault tree"]');
        await page.waitForSelector('.drawing');
        assert.equal(await page.textContent('.details h2'), name);
      });
    }
    await check('a saved drawing keeps the signs of a name', async () => {
      await show(page, '#/tree/11/drawing');
      const svg = await savedText(page, 'text=Save as SVG');
      assert.match(svg, /Valve A &amp; B/);
    });
    await check('no text of the model has run or broken the page', async () => {
      assert.equal(await page.evaluate(() => window.ran), undefined);
      assert.deepEqual(page.errors, []);
    });
    await page.context().close();
  });
}

async function checkCharacterSets(open) {
  const texts = ['\u00acgr\u00f6\u00dfer', '\u2264 5'];
  const bytes = ['\xacgr\u00f6\u00dfer', utf8('\u2264 5')];
  for (const charset of ['utf-8', 'shift_jis']) {
    await make.withResult(folder, result(bytes.map((text) => [text, text])), async (made) => {
      const index = readFileSync(made + '/Index.html', 'latin1');
      writeFileSync(made + '/Index.html', index.replace('<head>', '<head><meta charset="' + charset + '">'));
      await check('names survive a browser that takes ' + charset, async () => {
        const page = await open(made);
        assert.deepEqual(await page.locator('.overview tbody .name a').allTextContents(), texts);
        await page.context().close();
      });
    });
  }
}

const sound = result([['Top', 'stuck']]);

// What is wrong with a result, and what the page says of it.
const Broken = [
  ['an apostrophe in a name', result([['It\'s late', 'stuck']]), /model\/FaultTrees\.js is there, .*apostrophe/],
  ['a line break in a name', result([['Late\nagain', 'stuck']]), /model\/FaultTrees\.js is there, .*line break/],
  ['a backslash at an end', result([['Late\\u', 'stuck']]), /model\/FaultTrees\.js is there, .*backslash/],
  ['missing trees', {...sound, scripts: {FaultTrees: null}}, /model\/FaultTrees\.js is missing/],
  ['a name that closes an element', result([['Top</Name>', 'stuck']]), /model\/FaultTrees\.js is not well formed/],
];

async function checkBroken(open) {
  for (const [what, made, message] of Broken) {
    await make.withResult(folder, made, (place) => check(what + ' is named as the cause on the page', async () => {
      const page = await open(place);
      assert.match(await page.textContent('.problem'), message);
      await page.context().close();
    }));
  }
  for (const [what, text, message] of [
    ['broken', 'var CutSets_9 = \'it\'s broken\';', /model\/CutSets_9\.js is there, .*apostrophe/],
    ['missing', null, /model\/CutSets_9\.js is missing/]]) {
    await make.withResult(folder, {...sound, scripts: {CutSets_9: text}}, (place) =>
      check(what + ' cut sets are named, and all else is shown', async () => {
        const page = await open(place);
        assert.match(await page.textContent('.problem'), message);
        assert.equal(await page.textContent('.overview tbody .name a'), 'Top');
        await show(page, '#/tree/9');
        assert.equal(await page.textContent('.figures dd'), '0.5');
        await show(page, '#/tree/9/drawing');
        assert.ok(await page.locator('.node').count() > 1);
        await show(page, '#/tree/9/cutsets');
        assert.match((await page.locator('.problem').allTextContents()).join(' '), /were not loaded/);
        await page.context().close();
      }));
  }
  await make.withResult(folder, sound, (place) =>
    check('cut sets that are not well formed are named where they are asked for', async () => {
      const file = place + '/model/CutSets_9.js';
      writeFileSync(file, readFileSync(file, 'latin1').replace('</FMEA>', ''), 'latin1');
      const page = await open(place);
      assert.equal(await page.textContent('.overview tbody .name a'), 'Top');
      await show(page, '#/tree/9/cutsets');
      assert.match(await page.textContent('.problem'), /model\/CutSets_9\.js is not well formed/);
      await page.context().close();
    }));
}

async function checkEmpty(open) {
  await make.withResult(folder, {trees: '', cutSets: {}}, (place) =>
    check('a result without top events says so', async () => {
      const page = await open(place);
      assert.match(await page.textContent('.empty'), /no fault trees/);
      for (const [hash, message] of [['#/fmea', /no failure modes/], ['#/warnings', /no warnings/],
        ['#/allocations', /not part of this result/]]) {
        await show(page, hash);
        assert.match(await page.textContent('.empty'), message);
      }
      assert.deepEqual(page.errors, []);
      await page.context().close();
    }));
  const rootless = {...sound, trees: sound.trees + make.tree(0, '?', {description: 'First', unavailability: '0'}) +
      make.tree(0, '?', {description: 'Second', unavailability: '0'})};
  await make.withResult(folder, rootless, (place) =>
    check('top events without a tree are listed and say so', async () => {
      const page = await open(place);
      assert.deepEqual(await page.locator('.overview tbody .description').allTextContents(), ['First', 'Second']);
      assert.equal(await page.locator('.overview tbody .tag:text-is("No fault tree")').count(), 2);
      assert.equal(await page.locator('.overview tbody .name a').count(), 1);
      for (const view of ['', '/drawing', '/outline', '/cutsets']) {
        await show(page, '#/tree/0' + view);
        assert.match(await page.textContent('.empty'), /no fault tree|No cut sets/);
        assert.equal(await page.locator('.problem').count(), 0);
      }
      assert.deepEqual(page.errors, []);
      await page.context().close();
    }));
  await make.withResult(folder, sound, (place) => check('an address of nothing leads back to the overview', async () => {
    const page = await open(place, '#/nowhere');
    await page.click('text=Go to the overview');
    await page.waitForSelector('.overview');
    await show(page, '#/tree/777');
    assert.match(await page.textContent('.problem'), /no top event with the number 777/);
    assert.deepEqual(page.errors, []);
    await page.context().close();
  }));
}

await withBrowser(async (open) => {
  await checkNames(open);
  await checkCharacterSets(open);
  await checkBroken(open);
  await checkEmpty(open);
});
finish();
