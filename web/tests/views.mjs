// All views of results of the program, with the figures of the XML files beside them.
import assert from 'node:assert/strict';
import {basename} from 'node:path';
import {check, finish, resultFolders, savedRows, savedText, show, withBrowser} from './browser.mjs';
import {readExpected} from './expected.mjs';

const given = (text) => (text === null || text === '-1' ? '\u2013' : text);
const number = (text) => (text === null || text === '-1' ? NaN : Number(text));
const textOf = (page, selector) => page.locator(selector).allTextContents();

/// Sorted as the pages promise it: equal values keep their order, absent figures come last.
function sorted(list, value, sign) {
  return list.slice().sort((left, right) => {
    const [first, second] = [value(left), value(right)];
    if (typeof first === 'string') return sign * first.localeCompare(second, 'en', {numeric: true, sensitivity: 'base'});
    if (Number.isNaN(first) || Number.isNaN(second)) return Number.isNaN(first) - Number.isNaN(second);
    return sign * (first - second);
  });
}

/// Presses the head of each column twice and compares the order of the rows each time.
async function checkSorting(page, list, columns, shownOrder, expectedOrder) {
  for (const [key, value] of Object.entries(columns)) {
    const directions = new Set();
    for (let press = 0; press < 2; ++press) {
      const before = page.url();
      await page.click('[data-focus=sort-' + key + ']');
      // The address changes before the view does.
      await page.waitForFunction((address) => location.href !== address && VelTarn.shownHash === location.hash, before);
      const direction = await page.getAttribute('[aria-sort=ascending], [aria-sort=descending]', 'aria-sort');
      directions.add(direction);
      assert.deepEqual(await shownOrder(), expectedOrder(sorted(list, value, direction === 'ascending' ? 1 : -1)),
          key + ' ' + direction);
    }
    assert.equal(directions.size, 2, key + ' does not turn round');
  }
}

async function checkOverview(page, trees) {
  const names = () => textOf(page, '.overview tbody .name a');
  await check('the overview has the figures of every top event', async () => {
    for (const tree of trees) {
      const row = page.locator('.overview tbody tr', {has: page.locator('a[href="#/tree/' + tree.id + '"]')});
      const cells = await row.locator('td').allTextContents();
      assert.deepEqual(cells.slice(0, 5), [given(tree.unavailability), given(tree.frequency),
        given(tree.severity), given(tree.sil), String(tree.cutSets.length)]);
      for (const [order, count] of tree.orders.filter(([order]) => order <= 4)) {
        assert.equal(await row.locator('.column-order' + order).textContent(), count);
      }
      if (tree.description) assert.equal(await row.locator('.description').textContent(), tree.description);
    }
  });
  await check('the bars of the overview stand on the logarithmic scale that it names', async () => {
    const [, low, high] = (await page.textContent('.hint')).match(/from 1e(-?\d+) to 1e(-?\d+)/).map(Number);
    const widths = await page.locator('.scale-fill').evaluateAll((bars) => bars.map((bar) => parseFloat(bar.style.width)));
    const expected = sorted(trees, (tree) => number(tree.sort), -1).filter((tree) => number(tree.sort) > 0)
        .map((tree) => Number(((Math.log10(tree.sort) - low) / (high - low) * 100).toFixed(1)));
    assert.deepEqual(widths, expected);
  });
  await check('the overview starts with the largest unavailability, and every column sorts both ways', async () => {
    const nameOf = (list) => list.map((tree) => tree.name);
    const unavailability = (tree) => number(tree.sort);
    assert.deepEqual(await names(), nameOf(sorted(trees, unavailability, -1)));
    const orders = Array.from(new Set(trees.flatMap((tree) => tree.orders.map(([order]) => order))))
        .filter((order) => order <= 4);
    const countOf = (order) => (tree) => tree.cutSets.filter((set) => set.order === Number(order)).length;
    await checkSorting(page, trees, {name: (tree) => tree.name, unavailability,
      frequency: (tree) => number(tree.frequency), severity: (tree) => number(tree.severity),
      sil: (tree) => number(tree.sil), cutsets: (tree) => tree.cutSets.length,
      ...Object.fromEntries(orders.map((order) => ['order' + order, countOf(order)]))}, names, nameOf);
  });
  await check('the filter leaves what matches, for the CSV file too, and the address keeps it', async () => {
    const [first] = trees;
    const expected = trees.filter((tree) =>
      (tree.name + ' ' + tree.description).toUpperCase().includes(first.name.toUpperCase()));
    await page.fill('input[type=search]', first.name.toUpperCase());
    assert.deepEqual((await names()).sort(), expected.map((tree) => tree.name).sort());
    assert.match(page.url(), /filter=/);
    assert.deepEqual((await savedRows(page)).map(([name]) => name).sort(), expected.map((tree) => tree.name).sort());
  });
}

async function checkTopEvent(page, {events}, tree) {
  await show(page, '#/tree/' + tree.id);
  await check('a top event shows its figures and the number of cut sets by order', async () => {
    assert.equal(await page.textContent('h1'), tree.name);
    const stated = (text) => (text === null || text === '-1' ? 'not given' : text);
    assert.deepEqual(await textOf(page, '.figures dd'), [stated(tree.unavailability), stated(tree.frequency),
      stated(tree.severity), stated(tree.sil), String(tree.cutSets.length)]);
    const rows = await page.locator('.chart tbody tr').evaluateAll((list) => list.map((row) =>
      [row.cells[0].textContent, row.cells[1].textContent, parseFloat(row.querySelector('.bar-fill').style.width)]));
    const most = Math.max(...tree.orders.map(([, count]) => Number(count)));
    assert.deepEqual(rows, tree.orders.map(([order, count]) =>
      ['Order ' + order, count, Number((count / most * 100).toFixed(1))]));
    if (tree.description) assert.equal(await page.textContent('.lead'), tree.description);
  });
  await check('a top event lists what alone leads to it', async () => {
    const single = events.filter((event) => event.direct.some((effect) => effect.id === tree.id));
    assert.deepEqual(await textOf(page, '.columns section:last-child li a'), single.map((event) => event.name));
  });
  await check('a top event links to its tree and its cut sets', async () => {
    const addresses = await page.locator('.tabs a').evaluateAll((links) => links.map((link) => link.getAttribute('href')));
    assert.deepEqual(addresses, ['', '/drawing', '/outline', '/cutsets'].map((end) => '#/tree/' + tree.id + end));
  });
}

/// The texts of all rows of the box, which has to be as high as all of them for that.
const allRows = (page) => page.evaluate(async () => {
  const box = document.querySelector('.row-box');
  box.style.height = box.scrollHeight + 2 + 'px';
  await new Promise((resolve) => { requestAnimationFrame(() => requestAnimationFrame(resolve)); });
  const textOf = (row) => (row.classList.contains('group') ? row.textContent :
    [Array.from(row.querySelectorAll('.event-line a'), (link) => link.textContent).join(', '),
      ...Array.from(row.querySelectorAll('.figure'), (cell) => cell.textContent)].join(' | '));
  return Array.from(box.querySelectorAll('.row'), textOf);
});

const shareText = (set, tree) => {
  const share = set.sort / tree.sort * 100;
  return share !== 0 && share < 0.01 ? '< 0.01 %' : share.toFixed(2) + ' %';
};

function expectedRows(tree, nameOf, sets) {
  return Array.from(new Set(sets.map((set) => set.order))).sort((left, right) => left - right).flatMap((order) => {
    const group = sets.filter((set) => set.order === order);
    return ['Order ' + order + ': ' + group.length + (group.length === 1 ? ' cut set' : ' cut sets'),
      ...group.map((set) => [set.events.map(nameOf).join(', '), set.unavailability, set.frequency,
        shareText(set, tree)].join(' | '))];
  });
}

async function checkCutSets(page, {events}, tree) {
  const names = new Map(events.map((event) => [event.id, event.name]));
  const nameOf = (id) => names.get(id);
  const namesOf = (set) => set.events.map(nameOf).join(', ');
  const csvOf = (set) => [String(set.order), set.unavailability, set.frequency].join(' ');
  const csv = async () => (await savedRows(page)).map((row) => row.slice(0, 3).join(' '));
  await show(page, '#/tree/' + tree.id + '/cutsets');
  await check('cut sets stand by order with their share of the top event', async () => {
    assert.deepEqual(await allRows(page),
        expectedRows(tree, nameOf, sorted(tree.cutSets, (set) => Number(set.sort), -1)));
  });
  await check('every column sorts the cut sets both ways', () =>
    checkSorting(page, tree.cutSets, {events: namesOf, unavailability: (set) => Number(set.sort),
      frequency: (set) => Number(set.frequency), share: (set) => Number(set.sort)},
    () => allRows(page), (list) => expectedRows(tree, nameOf, list)));
  await check('the CSV file holds every cut set with its figures', async () =>
    assert.deepEqual((await csv()).sort(), tree.cutSets.map(csvOf).sort()));
  await check('words narrow the cut sets, for copies and the CSV file too', async () => {
    const word = namesOf(tree.cutSets[0]).toLowerCase();
    const left = tree.cutSets.filter((set) => namesOf(set).toLowerCase().includes(word));
    await page.fill('input[type=search]', word.replace(/, /g, ' '));
    assert.equal(await page.textContent('.count'), left.length + ' of ' + tree.cutSets.length + ' cut sets');
    assert.deepEqual((await csv()).sort(), left.map(csvOf).sort());
    await page.click('text=Copy');
    await page.waitForSelector('.notice.shown:has-text("copied")');
    const copied = (await page.evaluate(() => navigator.clipboard.readText())).trim().split(/\r?\n/).slice(1);
    assert.deepEqual(copied.map((line) => line.split('\t').slice(0, 3).join(' ')).sort(), left.map(csvOf).sort());
  });
  await check('an event narrows the cut sets, for the CSV file too', async () => {
    const [id] = tree.cutSets[0].events;
    const expected = tree.cutSets.filter((set) => set.events.includes(id));
    await show(page, '#/tree/' + tree.id + '/cutsets?event=' + id);
    assert.equal(await page.textContent('.chosen a'), nameOf(id));
    assert.equal(await page.textContent('.count'), expected.length + ' of ' + tree.cutSets.length + ' cut sets');
    assert.deepEqual((await csv()).sort(), expected.map(csvOf).sort());
  });
}

async function checkDrawing(page, {events}, tree) {
  const nodes = () => page.locator('.node').count();
  const place = () => page.getAttribute('.drawing svg > g', 'transform');
  await show(page, '#/tree/' + tree.id + '/drawing');
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
    await page.keyboard.press('ArrowUp');
    assert.equal(await page.locator('.node.chosen').getAttribute('aria-level'), '1');
  });
  await check('a tree zooms by keyboard and wheel and moves with the pointer', async () => {
    const box = await page.locator('.drawing').boundingBox();
    const places = [await place()];
    const moved = async () => places.push(await place());
    await page.keyboard.press('+');
    await moved();
    await page.mouse.move(box.x + 10, box.y + box.height - 10);
    await page.mouse.wheel(0, 120);
    await page.waitForTimeout(30);
    await moved();
    await page.mouse.down();
    await page.mouse.move(box.x + 60, box.y + box.height - 60, {steps: 3});
    await page.mouse.up();
    await moved();
    assert.equal(new Set(places).size, places.length, places.join(' '));
    await page.keyboard.press('0');
  });
  await check('a click on the sign at a gate closes and opens it', async () => {
    const before = await nodes();
    await page.locator('.node [data-toggle]').first().click();
    assert.ok(await nodes() < before);
    await page.locator('.node [data-toggle]').first().click();
    assert.equal(await nodes(), before);
  });
  await check('the SVG file is well formed and has a symbol for each gate and event shown', async () => {
    await page.click('text=Open all');
    const svg = await savedText(page, 'text=Save as SVG');
    const found = await page.evaluate((text) => {
      const parsed = new DOMParser().parseFromString(text, 'image/svg+xml');
      const count = (selector) => parsed.querySelectorAll(selector).length;
      return {errors: count('parsererror'), gates: count('.and, .or, .not'), transfers: count('.transfer'),
        events: count('.circle, .house, .ring, .diamond')};
    }, svg);
    assert.equal(found.errors, 0);
    // A transfer stands for the gates and events below its target.
    if (found.transfers === 0) {
      assert.deepEqual([found.gates, found.events], [tree.gates, tree.used.length]);
    } else {
      assert.ok(found.gates + found.transfers <= tree.gates, found.gates + ' gates of ' + tree.gates);
      assert.ok(found.events >= new Set(tree.used).size, found.events + ' events');
    }
  });
  for (const form of ['drawing', 'outline']) {
    await check('a search in the ' + form + ' chooses the node that it finds', async () => {
      await show(page, '#/tree/' + tree.id + '/' + form);
      const {name} = events.find((event) => tree.used.includes(event.id));
      await page.fill('input[type=search]', name.toUpperCase());
      assert.ok((await page.textContent('.details h2')).includes(name), name);
      assert.match(await page.textContent('.toolbar .count'), /^\d+ of \d+$/);
      await page.fill('input[type=search]', 'no such node');
      assert.equal(await page.textContent('.toolbar .count'), 'not found');
    });
  }
  await check('the outline closes and opens by keyboard', async () => {
    await page.focus('.outline');
    await page.keyboard.press('Home');
    await page.keyboard.press('ArrowLeft');
    assert.equal(await page.locator('.line').count(), 1);
    await page.keyboard.press('ArrowRight');
    assert.ok(await page.locator('.line').count() > 1);
    await page.keyboard.press('ArrowDown');
    assert.equal(await page.locator('.line.chosen').getAttribute('aria-level'), '2');
  });
}

/// What a view puts on paper, and that it is there again on the screen.
async function checkPaper(page, tree) {
  const views = [['cutsets', '.row:not(.group)', tree.cutSets.length, '.cut-sets .row'], ['drawing', 'svg', 1, '.node'],
    ['outline', '.line', null, '.outline .line']];
  for (const [view, parts, count, onScreen] of views) {
    await check('the view ' + view + ' is printed', async () => {
      await show(page, '#/tree/' + tree.id + '/' + view);
      // So few lines stand in view at the same time.
      if (view === 'outline') await page.click('text=Close all');
      const lines = await page.locator(onScreen).count();
      await page.emulateMedia({media: 'print'});
      await page.evaluate(() => window.dispatchEvent(new Event('beforeprint')));
      const printed = page.locator('.printed-rows ' + parts);
      const found = [await printed.count(), await printed.first().isVisible(), await page.locator(onScreen).first().isVisible()];
      await page.evaluate(() => window.dispatchEvent(new Event('afterprint')));
      await page.emulateMedia({media: null});
      assert.deepEqual(found, [count === null ? lines : count, true, false]);
      assert.equal(await page.locator('.printed-rows > *').count(), 0);
      assert.ok(await page.locator(onScreen).first().isVisible());
    });
  }
}

const listed = (effects) => effects.map((effect) => effect.name + ' cut sets').join('') || '\u2013';

function failureRow(event, severity) {
  return [event.component, event.shortName, given(event.unavailability), given(event.frequency),
    listed(event.direct), listed(event.further), Number.isNaN(severity) ? '\u2013' : String(severity),
    event.direct.length > 0];
}

async function checkFailureModes(page, {trees, events}) {
  const severityOf = (event) => {
    const known = [...event.direct, ...event.further]
        .map((effect) => number(trees.find((tree) => tree.id === effect.id).severity))
        .filter((value) => !Number.isNaN(value));
    return known.length > 0 ? Math.max(...known) : NaN;
  };
  const rows = () => page.locator('.fmea tbody tr').evaluateAll((list) => list.map((row) => [
    row.cells[0].querySelector('a').textContent, row.cells[1].querySelector('a').textContent,
    ...Array.from(row.cells).slice(2).map((cell) => (cell.querySelector('li') ?
      Array.from(cell.querySelectorAll('li'), (item) => item.textContent).join('') : cell.textContent)),
    row.querySelector('.tag.single') !== null]));
  const expected = (list) => list.map((event) => failureRow(event, severityOf(event)));
  await show(page, '#/fmea');
  await check('the failure modes list every event with its effects, severity and single point mark', async () =>
    assert.deepEqual(await rows(), expected(events)));
  await check('every column sorts the failure modes both ways', () =>
    checkSorting(page, events, {component: (event) => event.component, event: (event) => event.shortName,
      unavailability: (event) => number(event.unavailability), frequency: (event) => number(event.frequency),
      direct: (event) => event.direct.length, further: (event) => event.further.length, severity: severityOf},
    rows, expected));
  await show(page, '#/fmea');
  const [first] = events;
  const target = trees[trees.length - 1].name;
  const single = (event) => event.direct.length > 0;
  const filters = [['in', first.component, (event) => event.component.includes(first.component)],
    ['failure', first.shortName, (event) => (event.name + event.description).includes(first.shortName)],
    ['effect', target, (event) => [...event.direct, ...event.further].some(({name}) => name === target)]];
  for (const [key, text, matches] of filters) {
    await check('the failure modes are filtered by ' + key + ', for the CSV file too', async () => {
      await page.fill('[data-focus=filter-' + key + ']', text.toUpperCase());
      assert.deepEqual(await rows(), expected(events.filter(matches)));
      assert.deepEqual((await savedRows(page)).map((row) => row.slice(0, 2)),
          events.filter(matches).map((event) => [event.component, event.shortName]));
      await page.fill('[data-focus=filter-' + key + ']', '');
    });
  }
  await check('the failure modes are narrowed to single point failures', async () => {
    await page.check('[data-focus=single]');
    assert.deepEqual(await rows(), expected(events.filter(single)));
    assert.deepEqual((await savedRows(page)).map((row) => row[7]), events.filter(single).map(() => 'yes'));
    await page.uncheck('[data-focus=single]');
  });
  await check('on paper the failure modes are a table on white without the tools', async () => {
    await page.emulateMedia({media: 'print', colorScheme: 'dark'});
    const found = await page.evaluate(() => {
      const shown = (selector) => getComputedStyle(document.querySelector(selector)).display !== 'none';
      return {tools: shown('.toolbar') || shown('#MenuHeader'), table: getComputedStyle(document.querySelector('.fmea')).display,
        ground: getComputedStyle(document.documentElement).getPropertyValue('--ground').trim(),
        text: getComputedStyle(document.body).color};
    });
    await page.emulateMedia({media: null, colorScheme: 'light'});
    assert.deepEqual(found, {tools: false, table: 'table', ground: '#ffffff', text: 'rgb(0, 0, 0)'});
  });
}

async function checkWarnings(page, {warnings}) {
  await page.click('[data-focus=menu-warnings]');
  await page.waitForSelector('h1:text-is("Warnings")');
  await check('the warnings are all there', async () =>
    assert.deepEqual(await textOf(page, '.warnings li'), warnings));
}

/// By keyboard through the links of the page, and back through what was seen.
async function checkJourney(page, {trees}) {
  const tree = sorted(trees, (entry) => number(entry.sort), -1)[0];
  const title = (text) => page.waitForSelector('h1:text-is("' + text + '")');
  await show(page, '#/');
  await check('links lead on, and back and forward retrace the way', async () => {
    await page.focus('[data-focus=sort-order1], [data-focus=sort-cutsets] >> nth=-1');
    for (let step = 0; step < 20; ++step) {
      await page.keyboard.press('Tab');
      if (await page.evaluate(() => document.activeElement.closest('.name') !== null)) break;
    }
    await page.keyboard.press('Enter');
    await title(tree.name);
    await page.click('[data-focus="tab-Cut sets"]');
    const link = page.locator('.event-line a').first();
    const event = await link.textContent();
    await link.press('Enter');
    await title('Failure modes and effects');
    assert.equal(await page.textContent('.chosen'), 'Only ' + event + '. Show all components');
    await page.locator('.fmea tbody li a').first().press('Enter');
    await page.waitForSelector('.figures');
    await page.goBack();
    await title('Failure modes and effects');
    await page.goBack();
    await page.waitForSelector('.cut-sets');
    await page.goBack();
    await page.waitForSelector('.figures');
    await page.goBack();
    await page.waitForSelector('.overview');
    await page.goForward();
    await title(tree.name);
    assert.equal(page.url().split('#')[1], '/tree/' + tree.id);
  });
}

/// Follows every link to other views, each address once.
async function checkLinks(page) {
  await check('every link leads to a view', async () => {
    const waiting = ['#/'];
    const seen = new Set(waiting);
    while (waiting.length > 0) {
      const address = waiting.shift();
      await show(page, address);
      const {title, problem, links} = await page.evaluate(() => ({title: document.querySelector('h1').textContent,
        problem: document.querySelector('.problem') !== null,
        links: Array.from(document.querySelectorAll('[role=main] a[href], #MenuHeader li a'), (link) => link.getAttribute('href'))}));
      assert.ok(!problem && !/nothing at this address|cannot be shown/.test(title), address + ': ' + title);
      links.filter((link) => !seen.has(link)).forEach((link) => {
        assert.match(link, /^#\//, link);
        seen.add(link);
        waiting.push(link);
      });
    }
    assert.ok(seen.size > 10, String(seen.size));
  });
}

const folders = resultFolders();
await withBrowser(async (open) => {
  for (const folder of folders) {
    console.log(basename(folder));
    const expected = readExpected(folder);
    const page = await open(folder);
    await checkOverview(page, expected.trees);
    for (const tree of expected.trees) {
      await checkTopEvent(page, expected, tree);
      await checkCutSets(page, expected, tree);
      await checkDrawing(page, expected, tree);
    }
    await checkPaper(page, expected.trees[0]);
    await checkFailureModes(page, expected);
    await checkWarnings(page, expected);
    await checkJourney(page, expected);
    await checkLinks(page);
    await check('nothing is reported as an error', () => assert.deepEqual(page.errors, []));
    await page.context().close();
  }
});
finish();
