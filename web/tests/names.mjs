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
  ['the end of a section', 'x ]]> y', null],
  ['a negation sign', '\xacfire', '\u00acfire'],
];

// A model is in one of the two, so these stand in results of their own.
const Latin1Names = [
  ['Latin-1 letters', 'Druckbeh\u00e4lter gr\u00f6\u00dfer', null],
  ['Latin-1 letters that look like UTF-8', 'MEN\u00dc\u00bb \u00abDONN\u00c9\u00bb 20 \u00df\u00b0', null],
  ['a negation sign before Latin-1 letters', '\xacgr\u00f6\u00dfer', '\u00acgr\u00f6\u00dfer'],
];
const Utf8Names = [
  ['UTF-8 letters', utf8('Druckbeh\u00e4lter \u2264 5 \u03a9'), 'Druckbeh\u00e4lter \u2264 5 \u03a9'],
  ['a negation sign before UTF-8 letters', '\xac' + utf8('\u00d6ldruck'), '\u00ac\u00d6ldruck'],
];

async function checkNames(open, names) {
  const bytes = names.map(([, text]) => text);
  const warnings = '<WarningList>' + bytes.map((text) => '<Warning>' + text + '</Warning>').join('') + '</WarningList>';
  await make.withResult(folder, result(bytes.map((text) => [text, text, text]), warnings), async (made) => {
    const page = await open(made);
    const texts = (selector) => page.locator(selector).allTextContents();
    const expected = names.map(([, text, shown]) => shown || text);
    await check('names and warnings with ' + names[0][0] + ' and more are listed as they are', async () => {
      assert.deepEqual(await texts('.overview tbody .name a'), expected);
      await show(page, '#/fmea');
      assert.deepEqual(await texts('.fmea tbody .name > a'), expected);
      assert.deepEqual(await texts('.fmea tbody li a:first-child'), expected);
      await show(page, '#/warnings');
      assert.deepEqual(await texts('.warnings li'), expected);
    });
    for (const [index, [what]] of names.entries()) {
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
    if (names === Names) {
      await check('a saved drawing keeps the signs of a name', async () => {
        await show(page, '#/tree/11/drawing');
        const svg = await savedText(page, 'text=Save as SVG');
        assert.match(svg, /Valve A &amp; B/);
      });
    }
    await check('no text of the model has run or broken the page', async () => {
      assert.equal(await page.evaluate(() => window.ran), undefined);
      assert.deepEqual(page.errors, []);
    });
    await page.context().close();
  });
}

async function checkCharacterSets(open) {
  for (const [charset, names] of [['utf-8', Latin1Names], ['utf-8', Utf8Names], ['shift_jis', Latin1Names],
    ['shift_jis', Utf8Names]]) {
    await make.withResult(folder, result(names.map(([, text]) => [text, text])), async (made) => {
      const index = readFileSync(made + '/Index.html', 'latin1');
      writeFileSync(made + '/Index.html', index.replace('<head>', '<head><meta charset="' + charset + '">'));
      await check('names with ' + names[0][0] + ' survive a browser that takes ' + charset, async () => {
        const page = await open(made);
        assert.deepEqual(await page.locator('.overview tbody .name a').allTextContents(),
            names.map(([, text, shown]) => shown || text));
        await page.context().close();
      });
    });
  }
}

const sound = result([['Top', 'stuck']]);

// What is wrong with a result, and what the page says of it.
const Broken = [
  ['an apostrophe in a name', result([['It\'s late', 'stuck']]), /model\/FaultTrees\.js, model\/CutSets_9\.js are there, .*apostrophe/],
  ['a line break in a name', result([['Late\nagain', 'stuck']]), /model\/FaultTrees\.js, model\/CutSets_9\.js are there, .*line break/],
  ['a backslash at an end', result([['Late\\u', 'stuck']]), /model\/FaultTrees\.js, model\/CutSets_9\.js are there, .*backslash/],
  ['an apostrophe in the name of the model file', {...sound, scripts: {FaultTrees: 'var FaultTrees = \'<a model="it\'s">\';'}},
    /or in the name of the model file/],
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

/// Failure modes that cannot be read are not failure modes that are absent.
async function checkUnreadFailureModes(open) {
  const torn = result([['Top', 'stuck', 'x</Description> y'], ['Other', 'late']]);
  const views = [['#/fmea', '.empty', /could not be read/],
    ['#/tree/9', '.columns section:last-child', /^Single point failures.*could not be read/]];
  await make.withResult(folder, {...torn, trees: sound.trees + make.tree(10, 'Other', {top: make.use(1010)})}, (place) =>
    check('failure modes that cannot be read are told above every view, once for all files', async () => {
      const page = await open(place);
      for (const hash of ['#/', '#/fmea', '#/tree/9', '#/tree/9/drawing', '#/tree/9/cutsets', '#/warnings']) {
        await show(page, hash);
        const [panel, ...more] = await page.locator('.problem').allTextContents();
        assert.match(panel, /CutSets_9\.js, model\/CutSets_10\.js are not well formed/, hash);
        assert.deepEqual(more, [], hash);
      }
      for (const [hash, selector, text] of views) {
        await show(page, hash);
        assert.match(await page.textContent(selector), text);
      }
      assert.deepEqual(page.errors, []);
      await page.context().close();
    }));
  await make.withResult(folder, {...sound, scripts: {CutSets_9: null}}, (place) =>
    check('failure modes of a script that is missing are not called absent', async () => {
      const page = await open(place);
      for (const [hash, selector, text] of views) {
        await show(page, hash);
        assert.match(await page.textContent(selector), text);
      }
      await page.context().close();
    }));
  const pairs = Array.from({length: 14}, (_, index) => ['Top' + index, 'stuck']);
  const scripts = Object.fromEntries(pairs.map((_, index) => ['CutSets_' + (9 + index), 'var CutSets = \'it\'s\';']));
  await make.withResult(folder, {...result(pairs), scripts}, (place) =>
    check('one sentence names all scripts that are broken', async () => {
      const page = await open(place);
      const texts = await page.locator('.problem p').allTextContents();
      assert.equal(texts.length, 1);
      assert.match(texts[0], /^model\/CutSets_9\.js, model\/CutSets_10\.js, .* and 2 more are there, /);
      await page.context().close();
    }));
}

async function checkBackslashes(open) {
  const notice = '.problem:has-text("may not be those of the model")';
  await make.withResult(folder, result([['Top', 'stuck', 'C:\\temp']]), (place) =>
    check('a text that a backslash has changed is told', async () => {
      const page = await open(place);
      assert.match(await page.textContent(notice), /FaultTrees\.js, model\/CutSets_9\.js hold a text with a tab/);
      await show(page, '#/fmea');
      assert.equal(await page.locator(notice).count(), 1);
      await page.context().close();
    }));
  const warnings = '<WarningList><Warning>one\\ntwo in C:\\\\temp</Warning></WarningList>';
  await make.withResult(folder, result([['Top', 'stuck']], warnings), (place) =>
    check('warnings, which are written for scripts, are not told as changed', async () => {
      const page = await open(place, '#/warnings');
      assert.equal(await page.textContent('.warnings li'), 'one\ntwo in C:\\temp');
      assert.equal(await page.locator('.problem').count(), 0);
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
  for (const names of [Names, Latin1Names, Utf8Names]) await checkNames(open, names);
  await checkCharacterSets(open);
  await checkBroken(open);
  await checkUnreadFailureModes(open);
  await checkBackslashes(open);
  await checkEmpty(open);
});
finish();
