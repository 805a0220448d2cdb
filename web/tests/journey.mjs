// The way back: where the reader was in a view is found again, and the keyboard never falls out of it.
import assert from 'node:assert/strict';
import {check, finish, resultFolders, withBrowser} from './browser.mjs';
import * as make from './model.mjs';

const [folder] = resultFolders();
const Count = 400;
const list = (text) => Array.from({length: Count}, (_, index) => text(index + 1)).join('');

const effect = '<Effect ID="1000"><Name>Top</Name><SinglePointFailure>true</SinglePointFailure></Effect>';
const fmea = '<FMEA>' + list((id) =>
  make.component('Unit' + id, make.event(id, 'Unit' + id + '.stuck', {effects: effect}))) + '</FMEA>';
const part = (id, name, inside) => make.gate('And', id, name, inside);
const top = make.gate('Or', 1000, 'Top', part(1001, 'Left', make.use(1) + part(1003, 'Left inside', make.use(2) + make.use(3))) +
    part(1002, 'Right', list(make.use)));
const result = {
  trees: make.tree(1000, 'Top', {top, summary: '<CutSets order="1" pruned="false">' + Count + '</CutSets>'}),
  cutSets: {1000: fmea + make.tree(1000, 'Top',
      {cutSets: '<CutSets order="1">' + list((id) => make.cutSet(String(id / 1e6), [id])) + '</CutSets>'})},
};

const title = (page, text) => page.waitForSelector('h1:text-is("' + text + '")');
const focused = (page) => page.evaluate(() => document.activeElement.tagName + '.' + document.activeElement.className);
const linesOf = (page) => page.locator('.line').evaluateAll((lines) => lines.map((line) => line.id));

async function leaveAndReturn(page) {
  await page.click('[data-focus=menu-warnings]');
  await title(page, 'Warnings');
  await page.goBack();
}

async function checkTree(page) {
  const names = () => page.locator('.node title').allTextContents();
  const place = () => page.getAttribute('.drawing svg > g', 'transform');
  await check('back to a drawing finds its gates, its part of the window and its search', async () => {
    await page.fill('[data-focus=find]', 'Left');
    await page.click('text=Close all');
    await page.locator('.node:has(title:has-text("Left, AND")) [data-toggle]').click();
    await page.click('text=Zoom in');
    await page.mouse.move(400, 500);
    await page.mouse.down();
    await page.mouse.move(430, 460, {steps: 3});
    await page.mouse.up();
    const before = [await names(), await place(), await page.inputValue('[data-focus=find]')];
    assert.ok(before[0].some((name) => name.startsWith('Left inside')), before[0].join('; '));
    await leaveAndReturn(page);
    await page.waitForSelector('.drawing');
    assert.deepEqual([await names(), await place(), await page.inputValue('[data-focus=find]')], before);
    assert.equal(await page.textContent('.toolbar .count'), '1 of 2');
    await page.reload();
    await page.waitForSelector('.drawing .node');
    assert.deepEqual([await names(), await place()], before.slice(0, 2));
  });
  await check('closing a gate above the chosen node chooses the gate', async () => {
    await page.click('text=Close all');
    await page.locator('.node:has(title:has-text("Left, AND"))').click();
    await page.locator('.node:has(title:has-text("Top, OR")) [data-toggle]').click();
    assert.equal(await page.textContent('.node.chosen title'), 'Top, OR gate, 2 inputs');
    assert.equal(await page.locator('.node').count(), 1);
  });
  await check('back to an outline finds its lines and how far it is scrolled', async () => {
    await page.click('[data-focus=tab-Outline]');
    await page.click('text=Open all');
    await page.evaluate(() => { document.querySelector('.outline').scrollTop = 3000; });
    await page.waitForSelector('.line:has-text("Unit100.stuck")');
    const before = await linesOf(page);
    await leaveAndReturn(page);
    await page.waitForSelector('.line:has-text("Unit100.stuck")');
    assert.equal(await page.evaluate(() => document.querySelector('.outline').scrollTop), 3000);
    assert.deepEqual(await linesOf(page), before);
  });
}

async function checkLists(page) {
  const boxTop = () => page.evaluate(() => document.querySelector('.row-box').scrollTop);
  await check('back to cut sets finds how far they are scrolled, after sorting too', async () => {
    await page.click('[data-focus="tab-Cut sets"]');
    await page.waitForSelector('.cut-sets');
    await page.evaluate(() => { document.querySelector('.row-box').scrollTop = 5000; });
    const link = page.locator('.event-line a', {hasText: 'Unit257.stuck'});
    await link.click();
    await title(page, 'Failure modes and effects');
    await page.goBack();
    await link.waitFor();
    assert.equal(await boxTop(), 5000);
    await page.click('[data-focus=sort-frequency]');
    await page.waitForFunction(() => document.querySelector('.row-box').scrollTop === 0);
    await page.goBack();
    await page.waitForFunction(() => document.querySelector('.row-box').scrollTop === 5000);
  });
  await check('back to the failure modes finds how far the page is scrolled', async () => {
    await page.click('[data-focus=menu-fmea]');
    await title(page, 'Failure modes and effects');
    const link = page.locator('.fmea tbody tr', {hasText: 'Unit390.stuck'}).locator('li a').first();
    await page.waitForFunction((count) => {
      window.scrollTo(0, 1e6);
      return document.querySelectorAll('.fmea tbody tr').length === count;
    }, Count);
    await link.hover();
    const before = await page.evaluate(() => window.scrollY);
    assert.ok(before > 5000, String(before));
    await link.click();
    await title(page, 'Top');
    assert.equal(await page.evaluate(() => window.scrollY), 0);
    await page.goBack();
    await title(page, 'Failure modes and effects');
    assert.equal(await page.evaluate(() => window.scrollY), before);
    await page.goForward();
    await title(page, 'Top');
    await page.goBack();
    await title(page, 'Failure modes and effects');
    assert.equal(await page.evaluate(() => window.scrollY), before);
  });
}

async function checkFocus(page, open, made) {
  for (const [form, box] of [['drawing', '.drawing'], ['outline', '.outline']]) {
    await check('a choice from the details of the ' + form + ' leaves the keyboard in the tree', async () => {
      const tree = await open(made, '#/tree/1000/' + form);
      await tree.locator('.details .link-button:text-is("Left")').press('Enter');
      assert.equal(await tree.textContent('.details h2'), 'Left');
      assert.ok(await tree.evaluate((selector) => document.activeElement.matches(selector), box), await focused(tree));
      await tree.context().close();
    });
  }
  await check('a link of the failure modes to one component or event leaves the keyboard at the title', async () => {
    const links = await open(made, '#/fmea');
    for (const cell of ['td', 'th']) {
      await links.locator('.fmea tbody tr').nth(2).locator(cell + ' a').first().press('Enter');
      await links.waitForSelector('.chosen');
      assert.match(await focused(links), /^H1\./);
      await links.press('.chosen a', 'Enter');
      await links.waitForSelector('.chosen', {state: 'detached'});
      assert.match(await focused(links), /^H1\./);
    }
    await links.context().close();
  });
}

await make.withResult(folder, result, (made) => withBrowser(async (open) => {
  const page = await open(made, '#/tree/1000/drawing');
  await checkTree(page);
  await checkLists(page);
  await checkFocus(page, open, made);
  await check('nothing is reported as an error', () => assert.deepEqual(page.errors, []));
}));
finish();
