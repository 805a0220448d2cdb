// Every view of a result shows the figures that are in its data, and can be used.
import assert from 'node:assert/strict';
import {readFileSync} from 'node:fs';
import {createRequire} from 'node:module';
import {basename} from 'node:path';
import {check, finish, resultFolders, withBrowser} from './browser.mjs';

const axeSource = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

const field = (text, name) => {
  const found = new RegExp('<' + name + '>([^<]*)</' + name + '>').exec(text);
  return found ? found[1] : null;
};

/// What the scripts of the folder say, read by plain patterns: another way than that of the pages.
function readExpected(folder) {
  const xml = readFileSync(folder + '/model/FaultTrees.js', 'latin1');
  return xml.split('<FaultTree ID="').slice(1).map((text) => {
    const id = /^-?\d+/.exec(text)[0];
    const head = text.split('<TopNode>')[0];
    const cutSets = readFileSync(folder + '/model/CutSets_' + id + '.js', 'latin1');
    return {id, name: field(head, 'Name'), unavailability: field(head, 'Unavailability'),
      sort: field(head, 'UnavailabilitySort'), frequency: field(head, 'Frequency'),
      severity: field(head, 'Severity'), sil: field(head, 'SIL'),
      gates: (text.match(/<(And|Or|Not) ID=/g) || []).length,
      warnings: (xml.match(/<Warning>/g) || []).length,
      orders: Array.from(text.matchAll(/<CutSets order="(\d+)" pruned="false">(\d+)</g),
          (found) => [found[1], found[2]]),
      cutSets: cutSets.split('<CutSet>').slice(1).map((set) => ({
        unavailability: field(set, 'Unavailability'), frequency: field(set, 'Frequency'),
        events: Array.from(set.matchAll(/<Event ID="(-?\d+)"/g), (found) => found[1])})),
      events: Array.from(cutSets.split('<AllCutSets>')[0].matchAll(
          / ID="(-?\d+)"><Name>[^<]*<\/Name><ShortName>([^<]*)</g), (found) => ({id: found[1], name: found[2]}))};
  });
}

const given = (text) => (text === null || text === '-1' ? '\u2013' : text);
const asShown = (text) => text.replace(/\xac/g, '\u00ac');

async function downloadText(page, button) {
  const [download] = await Promise.all([page.waitForEvent('download'), page.click(button)]);
  return readFileSync(await download.path(), 'utf8');
}

async function checkNoErrors(page) {
  await check('nothing is reported as an error at ' + page.url(), () => assert.deepEqual(page.errors, []));
  await page.context().close();
}

async function checkOverview(open, folder, trees) {
  const page = await open(folder);
  const names = () => page.locator('.overview tbody .name a').allTextContents();
  const ordered = (sign) => trees.slice().sort((left, right) => sign * (left.sort - right.sort))
      .map((tree) => tree.name);
  await check('the overview has the figures of every top event', async () => {
    for (const tree of trees) {
      const row = page.locator('.overview tbody tr', {has: page.locator('a[href="#/tree/' + tree.id + '"]')});
      const cells = await row.locator('td').allTextContents();
      assert.deepEqual(cells.slice(0, 5), [given(tree.unavailability), given(tree.frequency),
        given(tree.severity), given(tree.sil), String(tree.cutSets.length)]);
      for (const [order, count] of tree.orders.filter(([order]) => order <= 4)) {
        assert.equal(await row.locator('.column-order' + order).textContent(), count);
      }
    }
  });
  await check('the overview starts with the largest unavailability and turns round', async () => {
    assert.deepEqual(await names(), ordered(-1));
    await page.click('[data-focus=sort-unavailability]');
    await page.waitForSelector('[aria-sort=ascending]');
    assert.deepEqual(await names(), ordered(1));
  });
  await check('back undoes the sort and forward does it again', async () => {
    await page.goBack();
    await page.waitForSelector('[aria-sort=descending]');
    assert.deepEqual(await names(), ordered(-1));
    await page.goForward();
    await page.waitForSelector('[aria-sort=ascending]');
    assert.deepEqual(await names(), ordered(1));
  });
  await check('the filter leaves what matches, and the address keeps it', async () => {
    const [first] = trees;
    await page.fill('input[type=search]', first.name.toUpperCase());
    assert.deepEqual(await names(), trees.map((tree) => tree.name)
        .filter((name) => name.toUpperCase().includes(first.name.toUpperCase())));
    assert.match(page.url(), /filter=/);
  });
  await checkNoErrors(page);
}

async function checkTopEvent(open, folder, tree) {
  const page = await open(folder, '#/tree/' + tree.id);
  await check('a top event shows its figures and the number of cut sets by order', async () => {
    assert.equal(await page.textContent('h1'), asShown(tree.name));
    const figures = await page.locator('.figures dd').allTextContents();
    assert.deepEqual(figures.slice(0, 2), [tree.unavailability, tree.frequency]);
    assert.deepEqual(await page.locator('.chart tbody tr').evaluateAll((rows) =>
      rows.map((row) => [row.cells[0].textContent.replace('Order ', ''), row.cells[1].textContent])),
    tree.orders);
  });
  await checkNoErrors(page);
}

async function checkCutSets(open, folder, tree) {
  const page = await open(folder, '#/tree/' + tree.id + '/cutsets');
  await check('the CSV file holds every cut set with its figures', async () => {
    const lines = (await downloadText(page, 'text=Save as CSV')).trim().split('\r\n').slice(1);
    const figures = (text) => text.split(',').slice(1, 3).join(' ');
    assert.deepEqual(lines.map(figures).sort(),
        tree.cutSets.map((set) => set.unavailability + ' ' + set.frequency).sort());
  });
  await check('an event narrows the cut sets, for the CSV file too', async () => {
    const {id} = tree.events.find((event) => tree.cutSets.some((set) => set.events.includes(event.id)));
    const expected = tree.cutSets.filter((set) => set.events.includes(id)).length;
    await page.evaluate((hash) => { location.hash = hash; }, '#/tree/' + tree.id + '/cutsets?event=' + id);
    await page.waitForSelector('.chosen');
    assert.equal(await page.textContent('.count'), expected + ' of ' + tree.cutSets.length + ' cut sets');
    const lines = (await downloadText(page, 'text=Save as CSV')).trim().split('\r\n');
    assert.equal(lines.length - 1, expected);
  });
  await checkNoErrors(page);
}

async function checkDrawing(open, folder, tree) {
  const page = await open(folder, '#/tree/' + tree.id + '/drawing');
  const nodes = () => page.locator('.node').count();
  await check('a tree closes and opens by keyboard', async () => {
    await page.focus('.drawing');
    const before = await nodes();
    await page.keyboard.press('Home');
    await page.keyboard.press(' ');
    assert.equal(await nodes(), 1);
    await page.keyboard.press(' ');
    assert.equal(await nodes(), before);
    await page.keyboard.press('ArrowDown');
    assert.equal(await page.locator('.node.chosen').getAttribute('aria-level'), '2');
  });
  await check('the SVG file is well formed and has a symbol for each open gate', async () => {
    await page.click('text=Open all');
    const svg = await downloadText(page, 'text=Save as SVG');
    const found = await page.evaluate((text) => {
      const parsed = new DOMParser().parseFromString(text, 'image/svg+xml');
      return {errors: parsed.getElementsByTagName('parsererror').length,
        gates: parsed.querySelectorAll('.and, .or, .not, .transfer').length};
    }, svg);
    assert.equal(found.errors, 0);
    assert.ok(found.gates > 0 && found.gates <= tree.gates, found.gates + ' of ' + tree.gates);
  });
  await check('a search chooses the node that it finds', async () => {
    const {name} = tree.events.find((event) => tree.cutSets.some((set) => set.events.includes(event.id)));
    await page.fill('input[type=search]', asShown(name));
    // The search does not tell capitals from small letters.
    const chosen = (await page.textContent('.details h2')).toLowerCase();
    assert.ok(chosen.includes(asShown(name).toLowerCase()), chosen + ' for ' + name);
  });
  await checkNoErrors(page);
}

async function checkFailureModes(open, folder, trees) {
  const page = await open(folder, '#/fmea');
  const [{events}] = trees;
  await check('the failure modes list every event, and filters narrow them', async () => {
    assert.deepEqual(await page.locator('.fmea tbody .name > a').allTextContents(),
        events.map((event) => asShown(event.name)));
    await page.fill('[data-focus=filter-failure]', asShown(events[0].name));
    assert.ok(await page.locator('.fmea tbody tr').count() < events.length || events.length === 1);
    await page.fill('[data-focus=filter-failure]', '');
    await page.check('[data-focus=single]');
    assert.equal(await page.locator('.fmea tbody tr').count(), await page.locator('.fmea .tag.single').count());
  });
  await check('the warnings are all there', async () => {
    await page.click('[data-focus=menu-warnings]');
    await page.waitForSelector('h1:text-is("Warnings")');
    assert.equal(await page.locator('.warnings li').count(), trees[0].warnings);
  });
  await checkNoErrors(page);
}

async function checkAccess(open, folder, tree) {
  const views = ['', '#/tree/' + tree.id, '#/tree/' + tree.id + '/drawing', '#/tree/' + tree.id + '/outline',
    '#/tree/' + tree.id + '/cutsets', '#/fmea', '#/warnings'];
  for (const hash of views) {
    for (const [width, scheme] of [[1280, 'light'], [1280, 'dark'], [360, 'light']]) {
      const page = await open(folder, hash, {width, scheme});
      await check('no barrier at ' + (hash || 'the start') + ', ' + width + ' wide, ' + scheme, async () => {
        assert.deepEqual(page.errors, []);
        await page.evaluate(axeSource);
        // Style sheets beside a page on disk cannot be fetched, and axe can do without.
        const {violations} = await page.evaluate(() => window.axe.run({preload: false}));
        assert.deepEqual(violations.map((found) => found.id + ': ' + found.nodes[0].html), []);
        const [shown, available] = await page.evaluate(() =>
          [document.documentElement.scrollWidth, document.documentElement.clientWidth]);
        assert.ok(shown <= available, 'the page is wider than its window: ' + shown);
      });
      await page.context().close();
    }
  }
}

const folders = resultFolders();
await withBrowser(async (open) => {
  for (const folder of folders) {
    console.log(basename(folder));
    const trees = readExpected(folder);
    await checkOverview(open, folder, trees);
    for (const tree of trees) {
      await checkTopEvent(open, folder, tree);
      await checkCutSets(open, folder, tree);
      await checkDrawing(open, folder, tree);
    }
    await checkFailureModes(open, folder, trees);
    await checkAccess(open, folder, trees[0]);
  }
});
finish();
