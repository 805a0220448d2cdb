// The page of a search by the program, with the figures of the XML file beside it.
import assert from 'node:assert/strict';
import {existsSync, readFileSync} from 'node:fs';
import {join} from 'node:path';
import {check, finish, MissingScript, savedRows, savedText, show, withBrowser} from './browser.mjs';
import {pageOf} from './search.mjs';

const [folder] = process.argv.slice(2);
const pagePath = join(folder, pageOf(folder));

// -- What the XML file says, by plain patterns: another way than the pages'.

const all = (text, pattern) => Array.from(text.matchAll(pattern), (found) => found.slice(1));
const field = (text, name) => new RegExp('<' + name + '>([^<]*)<').exec(text)[1];

function readIndividual(text, place) {
  const choices = text.split('<EncodingNode>').slice(1).map((node) => {
    const [, component, list] = /<Name>([^<]*)<[^]*?<Implementations>([^]*?)<\/Implementations>/.exec(node);
    return [component, all(list, /<Name>([^<]*)<\/Name>\s*<Index>(\d+)</g).filter(([, index]) =>
        index !== '0').map(([name]) => name)];
  });
  const values = all(text, /<Value>([^<]*)</g).map(([value]) => Number(value));
  return {id: field(text, 'IndividualID'), altered: field(text, 'LastAlteredGeneration'), choices, values,
      places: [place]};
}

function readState() {
  const xml = readFileSync(pagePath.replace(/html$/, 'xml'), 'latin1');
  const designs = new Map();
  const populations = xml.split('<NonDominatedPopulation>').slice(1);
  const archived = xml.includes('<ArchiveNonDominatedPopulations>');
  populations.forEach((population, index) => {
    const place = archived && index === populations.length - 1 ? 'archive' : index === 0 ? 'First frontier' :
        'Frontier ' + (index + 1);
    for (const text of population.split('<Individual>').slice(1)) {
      const design = readIndividual(text, place);
      if (designs.has(design.id)) designs.get(design.id).places.push(place);
      else designs.set(design.id, design);
    }
  });
  const list = Array.from(designs.values());
  list.forEach((design) => {
    const text = design.places.join(', ');
    design.found = text.charAt(0).toUpperCase() + text.slice(1);
  });
  return {xml, designs: list};
}

// -- The checks

const by = (value, sign) => (left, right) => sign * (value(left) - value(right));
const valueText = (value) => String(Number(value.toFixed(6))).replace(/^(\d)e-(\d)$/,
    (all, digit, places) => '0.' + '0'.repeat(places - 1) + digit);

/// All rows of the list, which has to be as high as all of them for that.
const allRows = (page) => page.evaluate(async () => {
  const box = document.querySelector('.designs');
  box.style.height = box.scrollHeight + 2 + 'px';
  await new Promise((resolve) => { requestAnimationFrame(() => requestAnimationFrame(resolve)); });
  return Array.from(box.querySelectorAll('.row'), (row) =>
    Array.from(row.children, (cell) => cell.querySelector('.cell-text').textContent));
});

const idsOf = async (page) => (await allRows(page)).map(([name]) => name.replace('Design ', ''));

async function checkSummary(page, {xml, designs}) {
  await check('the summary has the figures of the search', async () => {
    const pairs = Object.fromEntries(await page.locator('.search-summary .figures > div').evaluateAll((list) =>
      list.map((pair) => [pair.querySelector('dt').textContent, pair.querySelector('dd').textContent])));
    const count = (place) => String(designs.filter((design) => design.places.includes(place)).length);
    assert.equal(pairs.Designs, String(designs.length));
    assert.equal(pairs['First frontier'], count('First frontier'));
    assert.equal(pairs.Archive, count('archive'));
    assert.equal(pairs.Generation, field(xml, 'Generation'));
    assert.equal(pairs.Time, field(xml, 'TimeElapsed') + ' s');
    assert.equal(pairs.Encoding, 'Fixed (replicas)');
    assert.equal(pairs['Seed to go on with'], field(xml, 'RandomSeed'));
    assert.deepEqual(await page.locator('.objectives tbody .name').allTextContents(),
        ['Cost', 'Unavailability(LossOfReading)']);
    assert.match(await page.textContent('.objectives tbody tr'), /Minimise/);
    const least = Math.min(...designs.map((design) => design.values[0]));
    const most = Math.max(...designs.map((design) => design.values[0]));
    assert.equal(await page.locator('.objectives tbody tr').first().locator('td').last().textContent(),
        least + ' to ' + most);
  });
}

async function checkTable(page, designs) {
  await check('every design is listed with its values and where it was found, the cheapest first', async () => {
    const rows = (await allRows(page)).map((row) => row.slice(0, 4));
    const costs = rows.map((row) => Number(row[1]));
    assert.deepEqual(costs, costs.slice().sort((left, right) => left - right));
    assert.deepEqual(rows.sort(), designs.map((design) => ['Design ' + design.id, ...design.values.map(valueText),
        design.found]).sort());
  });
  const numeric = {number: (design) => Number(design.id), o0: (design) => design.values[0],
      o1: (design) => design.values[1]};
  const valueOf = new Map(designs.map((design) => [design.id, design]));
  for (const [key, value] of Object.entries(numeric)) {
    await check('the designs are sorted by ' + key + ' as numbers, both ways', async () => {
      const seen = new Set();
      for (let press = 0; press < 2; ++press) {
        const before = page.url();
        await page.click('[data-focus=sort-' + key + ']');
        await page.waitForFunction((address) => location.href !== address, before);
        const direction = await page.getAttribute('[aria-sort=ascending], [aria-sort=descending]', 'aria-sort');
        seen.add(direction);
        const shown = (await idsOf(page)).map((id) => value(valueOf.get(id)));
        assert.deepEqual(shown, designs.slice().sort(by(value, direction === 'ascending' ? 1 : -1)).map(value));
      }
      assert.equal(seen.size, 2);
    });
  }
}

async function checkFilter(page, designs) {
  const saved = async () => (await savedRows(page)).map(([id]) => id).sort();
  const expected = (test) => designs.filter(test).map((design) => design.id).sort();
  await show(page, '#/');
  await check('words of the choices narrow the list, and the address keeps them', async () => {
    await page.fill('input[type=search]', 'CERTIFIED tablet');
    const test = (design) => ['certified', 'tablet'].every((name) =>
        design.choices.some(([, names]) => names.includes(name)));
    assert.ok(expected(test).length > 0 && expected(test).length < designs.length);
    assert.deepEqual(await saved(), expected(test));
    assert.equal(await page.textContent('.count'), expected(test).length + ' of ' + designs.length + ' designs');
    assert.match(page.url(), /filter=CERTIFIED/);
    assert.match(await page.getAttribute('[data-focus=menu-plot]', 'href'), /filter=CERTIFIED/);
  });
  await check('the place narrows the list', async () => {
    await page.fill('input[type=search]', '');
    await page.selectOption('[data-focus=in]', 'archive');
    assert.deepEqual(await saved(), expected((design) => design.places.includes('archive')));
    await page.selectOption('[data-focus=in]', 'other');
    assert.deepEqual(await saved(), expected((design) => design.places.every((place) => /^Frontier/.test(place))));
    await page.selectOption('[data-focus=in]', '');
  });
  await check('limits narrow the list; what is no number is marked and leaves all', async () => {
    await page.click('text=Limits');
    await page.fill('[data-focus=from0]', '300');
    await page.fill('[data-focus=to1]', '0,001');
    const test = ({values}) => values[0] >= 300 && values[1] <= 0.001;
    assert.ok(expected(test).length > 0);
    assert.deepEqual(await saved(), expected(test));
    await page.fill('[data-focus=to1]', 'a lot');
    assert.equal(await page.getAttribute('[data-focus=to1]', 'aria-invalid'), 'true');
    assert.deepEqual(await saved(), expected(({values}) => values[0] >= 300));
  });
  await check('the CSV file has the values and choices of each design', async () => {
    await show(page, '#/');
    const [design] = designs;
    const row = (await savedRows(page)).find(([id]) => id === design.id);
    assert.deepEqual(row.slice(1, 4), [...design.values.map(valueText), design.found]);
    for (const [component, names] of design.choices) {
      assert.ok(row[row.length - 1].includes(component), component);
      for (const name of names) assert.ok(row[row.length - 1].includes(name), name);
    }
  });
}

async function checkPaper(page, designs) {
  await show(page, '#/');
  await check('on paper stand all designs', async () => {
    await page.evaluate(() => window.dispatchEvent(new Event('beforeprint')));
    assert.equal(await page.locator('.printed-rows .row').count(), designs.length);
    await page.evaluate(() => window.dispatchEvent(new Event('afterprint')));
    assert.equal(await page.locator('.printed-rows .row').count(), 0);
  });
}

/// Where the marks of a kind stand, by the first point of each.
const marksOf = (page, kind) => page.evaluate((name) => {
  const path = document.querySelector('.plot-points .mark-' + name);
  return path ? Array.from(path.getAttribute('d').matchAll(/M([-\d.]+) ([-\d.]+)/g),
      ([, x, y]) => [Number(x), Number(y)]) : [];
}, kind);

const shares = (values) => values.map((value) =>
    (value - Math.min(...values)) / (Math.max(...values) - Math.min(...values)));

async function checkPlot(page, designs) {
  await show(page, '#/plot');
  const front = designs.filter((design) => design.places.includes('First frontier'));
  const points = Array.from(new Map(front.map((design) => [design.values.join(), design.values])).values())
      .sort((left, right) => left[0] - right[0] || left[1] - right[1]);
  await check('the front stands in the plot where its values are, unavailability by decades', async () => {
    const marks = (await marksOf(page, 'front')).sort((left, right) => left[0] - right[0] || right[1] - left[1]);
    assert.equal(marks.length, points.length);
    const near = (found, expected) => found.forEach((share, index) =>
        assert.ok(Math.abs(share - expected[index]) < 0.002, index + ': ' + share));
    near(shares(marks.map(([x]) => x)), shares(points.map(([cost]) => cost)));
    near(shares(marks.map(([, y]) => -y)), shares(points.map(([, unavailability]) => Math.log10(unavailability))));
  });
  await check('without the logarithm the same points stand by value', async () => {
    await page.uncheck('[data-focus=log-y]');
    await page.waitForSelector('.axis-title:not(:has-text("logarithmic"))');
    const marks = await marksOf(page, 'front');
    const heights = shares(marks.map(([, y]) => -y)).sort((left, right) => left - right);
    const expected = shares(points.map(([, unavailability]) => unavailability)).sort((left, right) => left - right);
    heights.forEach((share, index) => assert.ok(Math.abs(share - expected[index]) < 0.002));
    assert.match(page.url(), /ylog=0/);
  });
  await check('the axes can be changed', async () => {
    await page.selectOption('[data-focus=axis-x]', '1');
    await page.waitForSelector('.title-x:has-text("Unavailability")');
    assert.match(await page.textContent('.axis-title'), /^Cost, minimise/);
  });
  await check('the keyboard goes through the points by value and opens one', async () => {
    await show(page, '#/plot');
    await page.focus('.plot-points');
    await page.keyboard.press('End');
    const dearest = Math.max(...designs.map((design) => design.values[0]));
    assert.equal(await page.textContent('.details dd'), String(dearest));
    await page.keyboard.press('Home');
    const costs = designs.map((design) => design.values[0]).sort((left, right) => left - right);
    assert.equal(await page.textContent('.details dd'), String(costs[0]));
    for (let step = 1; step <= 5; ++step) {
      await page.keyboard.press('ArrowRight');
      assert.equal(await page.textContent('.details dd'), String(costs[step]));
      assert.match(await page.getAttribute('#PlotOption', 'aria-label'), new RegExp('Cost ' + costs[step] + ','));
      assert.equal(await page.getAttribute('#PlotOption', 'aria-posinset'), String(step + 1));
    }
    const name = (await page.textContent('.details h2')).trim();
    await page.keyboard.press('Enter');
    await page.waitForSelector('.values');
    assert.equal(await page.textContent('h1'), name);
    await page.goBack();
    await page.waitForSelector('.plot');
    assert.equal((await page.textContent('.details h2')).trim(), name);
  });
  await check('a click chooses the point under the pointer', async () => {
    const [x, y] = (await marksOf(page, 'front')).sort((left, right) => right[0] - left[0])[0];
    await page.locator('.plot-points').scrollIntoViewIfNeeded();
    const area = await page.locator('.plot-points').boundingBox();
    await page.mouse.click(area.x + x + 5, area.y + y);
    assert.equal(await page.textContent('.details dd'), String(points[points.length - 1][0]));
    assert.match(page.url(), /design=\d+/);
  });
  await check('the saved drawing is one that stands for itself', async () => {
    const svg = await savedText(page, 'text=Save as SVG');
    assert.equal(svg.match(/<svg /g).length, 1);
    assert.match(svg, /Upwards: Unavailability\(LossOfReading\), minimise/);
    assert.match(svg, /fill="rgb/);
    assert.ok(!svg.includes('class='));
  });
}

const replicas = (names) => Array.from(new Set(names), (name) => {
  const count = names.filter((other) => other === name).length;
  return (count > 1 ? count + ' \u00d7 ' : '') + name;
}).join(' + ');

const cells = (page, table) => page.locator(table + ' tbody tr').evaluateAll((rows) =>
  rows.map((row) => Array.from(row.cells, (cell) => cell.textContent.trim())));

async function checkDesigns(page, designs) {
  const front = designs.filter((design) => design.places.includes('First frontier')).sort((left, right) =>
      left.values[0] - right.values[0]);
  const [first, last] = [front[0], front[front.length - 1]];
  await check('one design shows the replicas of each component', async () => {
    for (const design of [first, last]) {
      await show(page, '#/design/' + design.id);
      assert.deepEqual(await cells(page, '.choices'),
          design.choices.map(([component, names]) => [component, String(names.length), replicas(names)]));
      assert.deepEqual((await cells(page, '.values')).map((row) => row[row.length - 1]),
          design.values.map(valueText));
      assert.equal(await page.locator('.figures dd').last().textContent(), design.altered);
    }
  });
  await check('two designs stand side by side with their differences', async () => {
    await page.fill('[data-focus=other]', 'x');
    await page.click('button:text-is("Compare")');
    assert.equal(await page.textContent('.field-problem'), 'There is no design x.');
    await page.fill('[data-focus=other]', first.id);
    await page.keyboard.press('Enter');
    await page.waitForSelector('.compare-values');
    const rows = await cells(page, '.compare-choices');
    const expected = last.choices.map(([component, names], index) => [component, replicas(names),
        replicas(first.choices[index][1])]);
    assert.deepEqual(rows, expected.map((row) => [...row, row[1] === row[2] ? 'same' : 'differs']));
    assert.ok(rows.some((row) => row[3] === 'differs'));
    assert.equal(await page.locator('.compare-choices tr.differs').count(),
        rows.filter((row) => row[3] === 'differs').length);
    const [cost] = await cells(page, '.compare-values');
    assert.match(cost[3], new RegExp('^-' + (last.values[0] - first.values[0]) + ' .*better$'));
    assert.match((await cells(page, '.compare-values'))[1][3], /^\+.*worse$/);
  });
  await check('the comparison can be narrowed to differences', async () => {
    await page.check('[data-focus=only]');
    const rows = await cells(page, '.compare-choices');
    assert.ok(rows.every((row) => row[3] === 'differs'));
    assert.match(page.url(), /only=yes/);
    assert.equal((await savedRows(page)).length, rows.length);
  });
  await check('a design is kept from the table until another is chosen', async () => {
    await show(page, '#/');
    await page.click('[data-focus=compare-' + first.id + ']');
    await page.waitForSelector('.kept');
    await show(page, await page.getAttribute('[data-focus=menu-plot]', 'href'));
    assert.match(await page.textContent('.kept'), new RegExp('^Design ' + first.id + ' is kept'));
    await page.focus('.plot-points');
    await page.keyboard.press('End');
    await page.click('.details >> text=Compare with ' + first.id);
    await page.waitForSelector('.compare-values');
    assert.match(await page.textContent('h1'), new RegExp('^Designs ' + first.id + ' and '));
  });
}

await withBrowser(async (open) => {
  const state = readState();
  const page = await open(pagePath);
  await checkSummary(page, state);
  await checkTable(page, state.designs);
  await checkFilter(page, state.designs);
  await checkPaper(page, state.designs);
  await checkPlot(page, state.designs);
  await checkDesigns(page, state.designs);
  await check('nothing is reported as an error, but the second script where there is none', () => {
    const expected = existsSync(pagePath.replace(/\.html$/, '-Model.js')) ? [] : [MissingScript];
    assert.deepEqual(page.errors, expected);
  });
});
finish();
