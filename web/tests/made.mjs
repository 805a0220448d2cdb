// What no example has: shared and negated gates, pruned orders, figures that sort differently as
// text, safety allocations.
import assert from 'node:assert/strict';
import {check, finish, resultFolders, savedRows, show, withBrowser} from './browser.mjs';
import * as make from './model.mjs';

const [folder] = resultFolders();

const fmea = '<FMEA>' + make.component('DEFAULT::Pump', make.event(1, 'DEFAULT::Pump.stuck') +
    make.event(2, 'DEFAULT::Pump.leaks')) + '</FMEA>';

async function checkLogic(open) {
  const shared = make.gate('And', 20, 'Both', make.use(1) + make.use(2));
  const top = make.gate('Or', 9, 'Top', shared + make.gate('Not', 21, 'Neither', shared) +
      make.gate('Or', 20, 'Both', make.use(1)));
  const result = {trees: make.tree(9, 'Top', {top, summary: '<CutSets order="1" pruned="false">3</CutSets>' +
      '<CutSets order="2" pruned="true">12</CutSets>'}), cutSets: {9: fmea}};
  await make.withResult(folder, result, async (made) => {
    const page = await open(made, '#/tree/9/drawing');
    await page.click('text=Open all');
    await check('a gate that is used twice is drawn once, and as a transfer to it', async () => {
      assert.equal(await page.locator('.node .transfer').count(), 1);
      // The third gate has the same number but other inputs, so it is another one.
      assert.equal(await page.locator('.node .or').count(), 2);
      await page.locator('.node', {has: page.locator('.transfer')}).click();
      assert.match(await page.textContent('.details'), /transfer to the same part/);
      await page.focus('.drawing');
      await page.keyboard.press('Enter');
      assert.equal(await page.locator('.node.chosen .and').count(), 1);
      assert.match(page.url(), /node=1/);
    });
    await check('a NOT gate has the symbol with the bubble', async () => {
      assert.equal(await page.locator('.node .not').count(), 1);
      // Two closed outlines: the triangle and a circle made of two arcs.
      const path = await page.getAttribute('.node .not', 'd');
      assert.equal(path.match(/Z/g).length, 2);
      assert.equal(path.match(/A/g).length, 2);
    });
    await check('orders beyond the limits of the run are marked and not counted', async () => {
      await show(page, '#/tree/9');
      assert.match(await page.textContent('.chart tr:has-text("Order 2")'), /12 pruned/);
      assert.equal(await page.locator('.figures dd').last().textContent(), '3');
      await show(page, '#/');
      assert.equal(await page.textContent('.column-order2'), '0, 12 pruned');
    });
    await page.context().close();
  });
  const flat = {trees: make.tree(9, 'Order in time', {top: make.use(1) + make.gate('Or', 22, 'Later', make.use(2))}),
    cutSets: {9: fmea}};
  await make.withResult(folder, flat, (made) =>
    check('all inputs of a top gate without an element of its own are drawn', async () => {
      const page = await open(made, '#/tree/9/drawing');
      assert.deepEqual(await page.locator('.node title').allTextContents(), ['Order in time, Gate without a symbol here, 2 inputs',
        'DEFAULT::Pump.stuck, Basic event', 'Later, OR gate, 1 input', 'DEFAULT::Pump.leaks, Basic event']);
      await page.context().close();
    }));
}

async function checkStates(open) {
  const top = make.gate('Goto', 9, 'Lost', make.gate('Or', 20, 'Any', make.use(1) +
      make.gate('Goto', 21, 'Pump lost', make.use(2))));
  await make.withResult(folder, {trees: make.tree(9, 'Lost', {top}), cutSets: {9: fmea}}, (made) =>
    check('the top of a tree of states is called a top event, and places below it what they are', async () => {
      const page = await open(made, '#/tree/9/drawing');
      assert.deepEqual(await page.locator('.node title').allTextContents(), ['Lost, Top event, 1 input',
        'Any, OR gate, 2 inputs', 'DEFAULT::Pump.stuck, Basic event',
        'Pump lost, Failure in another place, 1 input', 'DEFAULT::Pump.leaks, Basic event']);
      await page.context().close();
    }));
}

async function checkScale(open) {
  for (const [unavailabilities, scale, widths] of [[['1'], '1e-1 to 1e0', ['100.0%']],
    [['1', '0.1'], '1e-2 to 1e0', ['100.0%', '50.0%']], [['0.001'], '1e-4 to 1e-2', ['50.0%']]]) {
    const trees = unavailabilities.map((unavailability, index) => make.tree(9 + index, 'Top',
        {unavailability, top: make.use(1)})).join('');
    await make.withResult(folder, {trees, cutSets: {}}, (made) =>
      check('unavailabilities of ' + unavailabilities.join(' and ') + ' stand on a scale from ' + scale, async () => {
        const page = await open(made);
        assert.match(await page.textContent('.hint'), new RegExp('from ' + scale + '\\.'));
        assert.deepEqual(await page.locator('.scale-fill').evaluateAll((bars) =>
          bars.map((bar) => bar.style.width)), widths.map((width) => String(parseFloat(width)) + '%'));
        await page.context().close();
      }));
  }
}

/// Paper has the sheet for every medium only, and browsers leave out backgrounds.
async function checkPaper(open) {
  const effect = '<Effect ID="9"><Name>Top</Name><SinglePointFailure>true</SinglePointFailure></Effect>';
  const cutSets = {9: '<FMEA>' + make.component('Pump', make.event(1, 'Pump.stuck', {description: 'Rust', effects: effect})) + '</FMEA>'};
  const result = {trees: make.tree(9, 'Top', {top: make.use(1), summary: '<CutSets order="1" pruned="false">5</CutSets>' +
      '<CutSets order="2" pruned="false">10</CutSets>'}), cutSets};
  await make.withResult(folder, result, (made) =>
    check('a printed summary sets descriptions below names and draws its bars', async () => {
      const page = await open(made, '#/tree/9');
      await page.emulateMedia({media: 'print'});
      const [name, description] = [await page.locator('section li a').boundingBox(),
        await page.locator('section li .description').boundingBox()];
      assert.ok(description.y >= name.y + name.height, JSON.stringify([name, description]));
      const bars = await page.locator('.bar-fill').evaluateAll((list) => list.map((bar) =>
        ({width: bar.getBoundingClientRect().width, border: parseFloat(getComputedStyle(bar).borderTopWidth)})));
      assert.ok(bars.every((bar) => bar.border > 5), JSON.stringify(bars));
      assert.ok(Math.abs(bars[1].width / bars[0].width - 2) < 0.05 && bars[1].width > 100, JSON.stringify(bars));
      await page.context().close();
    }));
}

async function checkSorting(open) {
  // Text order and order of size differ, and so do the six digits shown and the key behind them.
  const figures = [['A', '9e-06', '0.000009'], ['B', '0.5', '0.5'], ['C', '1e-12', '0.000000000001'],
    ['D', '0.123457', '0.12345671'], ['E', '0.123457', '0.12345674'], ['F', '0', '0.0'], ['G', '0.0001', '0.0001']];
  const trees = figures.map(([name, unavailability, sort], index) => make.tree(index + 1, name,
      {unavailability, top: make.gate('Or', index + 1, name, make.use(1))}).replace(
      /<UnavailabilitySort>.*<\/UnavailabilitySort>/, '<UnavailabilitySort>' + sort + '</UnavailabilitySort>')).join('');
  await make.withResult(folder, {trees, cutSets: {}}, (made) =>
    check('unavailabilities sort by their size to the last digit', async () => {
      const page = await open(made);
      const names = () => page.locator('.overview tbody .name a').allTextContents();
      assert.deepEqual(await names(), ['B', 'E', 'D', 'G', 'A', 'C', 'F']);
      await page.click('[data-focus=sort-unavailability]');
      await page.waitForSelector('[aria-sort=ascending]');
      assert.deepEqual(await names(), ['F', 'C', 'A', 'G', 'D', 'E', 'B']);
      await page.context().close();
    }));
}

async function checkWithoutFailureModes(open) {
  const top = make.gate('And', 9, 'Top', make.use(1) + make.use(2));
  // The blank in the tag comes with countNormalEvents=false.
  const result = {trees: make.tree(9, 'Top', {top}), cutSets: {9: make.tree(9, 'Top',
      {cutSets: '<CutSets order="1"></CutSets><CutSets order="2" >' + make.cutSet('0.25', [1, 2]) + '</CutSets>'})}};
  await make.withResult(folder, result, (made) =>
    check('a result without failure modes has numbers for the names of its events', async () => {
      const page = await open(made, '#/tree/9/cutsets');
      assert.deepEqual(await page.locator('.cut-sets .row').allTextContents(),
          ['Order 2: 1 cut set', 'Event 1Event 20.25050.00 %']);
      await show(page, '#/tree/9/drawing');
      assert.deepEqual(await page.locator('.node title').allTextContents(),
          ['Top, AND gate, 2 inputs', 'Event 1, Event', 'Event 2, Event']);
      await show(page, '#/fmea');
      assert.match(await page.textContent('.empty'), /no failure modes/);
      assert.deepEqual(page.errors, []);
      await page.context().close();
    }));
}

async function checkAllocations(open) {
  const nodes = (first, second, third) => make.encodingNode('DEFAULT::Pump', [['stuck', first], ['leaks', second]],
      make.encodingNode('DEFAULT::Pump.Motor', [['stalls &amp; smokes', third]]));
  const result = {trees: make.tree(9, 'Top', {top: make.gate('Or', 9, 'Top', make.use(1))}),
    cutSets: {9: fmea}, after: make.allocations([{id: 0, cost: 1110, nodes: nodes(1, 2, 3)},
      {id: 1, cost: 20, nodes: nodes(1, 1, -1)}, {id: 2, cost: 200, nodes: nodes(2, 2, 0)}])};
  await make.withResult(folder, result, async (made) => {
    const page = await open(made);
    const rows = () => page.locator('.allocations tbody tr').evaluateAll((list) =>
      list.map((row) => Array.from(row.cells, (cell) => cell.textContent)));
    await check('safety allocations stand by cost with the number of events at each level', async () => {
      await page.click('[data-focus=menu-allocations]');
      await page.waitForSelector('.allocations');
      assert.deepEqual(await page.locator('thead th').allTextContents(),
          ['Allocation', 'Cost \u25b2', 'Level 3', 'Level 2', 'Level 1', 'Level 0']);
      assert.deepEqual(await rows(), [['Allocation 1', '20', '0', '0', '2', '0'],
        ['Allocation 2', '200', '0', '2', '0', '1'], ['Allocation 0', '1110', '1', '1', '1', '0']]);
    });
    await check('a safety allocation shows the level of each event of each component', async () => {
      await page.click('text=Allocation 0');
      await page.waitForSelector('h1:text-is("Safety allocation 0")');
      assert.deepEqual(await rows(), [['DEFAULT::Pump', 'stuck', '1'], ['DEFAULT::Pump', 'leaks', '2'],
        ['DEFAULT::Pump.Motor', 'stalls & smokes', '3']]);
      assert.deepEqual(await page.locator('.figures > div').allTextContents(),
          ['Cost1110', 'Level 31 event', 'Level 21 event', 'Level 11 event']);
    });
    await check('the levels of an allocation are sorted, filtered and saved', async () => {
      await page.click('[data-focus=sort-level]');
      await page.waitForSelector('[aria-sort=descending]');
      assert.deepEqual((await rows()).map((row) => row[2]), ['3', '2', '1']);
      await page.fill('input[type=search]', 'pump.motor');
      assert.deepEqual(await savedRows(page), [['DEFAULT::Pump.Motor', 'stalls & smokes', '3']]);
      assert.equal(await page.textContent('.count'), '1 of 3 events');
    });
    await check('an event without a level has a dash, and names lead to the failure modes', async () => {
      await show(page, '#/allocations/1');
      assert.deepEqual((await rows()).map((row) => row[2]), ['1', '1', '\u2013']);
      await page.click('.allocations tbody a:text-is("stuck")');
      await page.waitForSelector('.fmea');
      assert.equal(await page.textContent('.chosen'), 'Only DEFAULT::Pump.stuck. Show all components');
    });
    await check('an allocation that is not there is named', async () => {
      await show(page, '#/allocations/7');
      assert.match(await page.textContent('.problem'), /no safety allocation 7/);
      assert.deepEqual(page.errors, []);
    });
    await page.context().close();
  });
}

await withBrowser(async (open) => {
  await checkLogic(open);
  await checkStates(open);
  await checkScale(open);
  await checkPaper(open);
  await checkSorting(open);
  await checkWithoutFailureModes(open);
  await checkAllocations(open);
});
finish();
