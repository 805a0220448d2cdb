// Searches that no example has: bounds, hierarchies, safety levels, names of all kinds, missing and broken files,
// and thousands of designs.
import assert from 'node:assert/strict';
import {basename} from 'node:path';
import {axeSource, checkBarriers, Settings} from './barriers.mjs';
import {check, finish, MissingScript, savedRows, savedText, show, withBrowser} from './browser.mjs';
import * as make from './search.mjs';

const [folder] = process.argv.slice(2);

const texts = (page, selector) => page.locator(selector).allTextContents();
const cells = (page, table) => page.locator(table + ' tbody tr').evaluateAll((rows) =>
  rows.map((row) => Array.from(row.cells, (cell) => cell.textContent.trim())));
const rowsOf = (page) => page.locator('.designs .row').evaluateAll((rows) =>
  rows.map((row) => Array.from(row.children, (cell) => cell.querySelector('.cell-text').textContent)));

const Unavailability = 'Unavailability(Loss of braking)';
const Objectives = {Cost: 'Minimise', Reach: 'Maximise', [Unavailability]: 'Minimise'};
const pump = (name) => make.fixed({'DEFAULT::Pump': [[name, 1], ['', 0]]});
const design = (id, cost, reach, unavailability, encoding = pump('small')) =>
  ({id, encoding, values: {Cost: cost.toFixed(6), Reach: reach.toFixed(6),
      [Unavailability]: unavailability.toFixed(6)}});

const Bounded = {
  state: make.nsga({objectives: {...Objectives, Beauty: 'Maximise'}}, [
    [design(1, 100, 5, 0.01), design(2, 200, 7, 0.001), design(3, 500, 9, 0)],
    [design(4, 210, 6, 0.02), design(5, 250, 7, 0.03), design(6, 250, 3, 0.004)]],
  [design(2, 200, 7, 0.001), design(7, 300, 8, 0.0005), design(3, 501, 9, 0, pump('large'))]),
  model: make.modelOf({Cost: [null, '400'], Reach: ['4', null], [Unavailability]: [null, '0.02']}),
};

async function checkBounds(open) {
  await make.withSearch(folder, Bounded, async (path) => {
    const page = await open(path);
    const status = async () => Object.fromEntries((await rowsOf(page)).map((row) => [row[0], row[5]]));
    await check('designs beyond a bound are infeasible, those at it and in the archive are not', async () => {
      assert.deepEqual(await status(), {'Design 1': 'Feasible', 'Design 2': 'Feasible', 'Design 7': 'Feasible',
        'Design 4': 'Feasible', 'Design 5': 'Infeasible', 'Design 6': 'Infeasible', 'Design 3': 'Infeasible',
            'Design 3.2': 'Feasible'});
      assert.equal(await page.locator('.designs .row.kind-infeasible .mark-infeasible').count(), 3);
    });
    await check('a design that stands in two places is listed once, and two that share a number twice', async () => {
      const rows = await rowsOf(page);
      assert.equal(rows.find((row) => row[0] === 'Design 2')[4], 'First frontier, archive');
      assert.deepEqual(rows.filter((row) => /^Design 3/.test(row[0])).map((row) => [row[1], row[4]]),
          [['500', 'First frontier'], ['501', 'Archive']]);
    });
    await check('objectives show goal, bounds and range; one that was not measured says so', async () => {
      assert.deepEqual(await cells(page, '.objectives'), [['Cost', 'Minimise', 'at most 400', '100 to 501'],
        ['Reach', 'Maximise', 'at least 4', '3 to 9'], [Unavailability, 'Minimise', 'at most 0.02', '0 to 0.03'],
        ['Beauty', 'Maximise', 'none', 'not measured']]);
    });
    await check('zeros of saved unavailabilities are explained', async () =>
      assert.match((await texts(page, '.hint')).join(' '), /saved with six places/));
    await check('feasibility filters the list', async () => {
      await page.selectOption('[data-focus=feasible]', 'no');
      assert.deepEqual((await savedRows(page)).map(([id]) => id), ['5', '6', '3']);
      await page.selectOption('[data-focus=feasible]', '');
    });
    await check('a design says which bounds it breaks, and which designs beat it', async () => {
      await show(page, '#/design/5');
      assert.equal(await page.textContent('.broken'), Unavailability + ' 0.03 is above 0.02.');
      assert.deepEqual(await texts(page, '.neighbours .design-link'), ['Design 2']);
      await show(page, '#/design/6');
      assert.equal(await page.textContent('.broken'), 'Reach 3 is below 4.');
      assert.deepEqual((await cells(page, '.values')).map((row) => row[2]),
          ['at most 400', 'at least 4 Broken', 'at most 0.02']);
    });
    await check('each kind of design has a mark of its own, and bounds are drawn', async () => {
      await show(page, '#/plot');
      const count = async (kind) => (await page.getAttribute('.plot-points .mark-' + kind, 'd')).match(/M/g).length;
      assert.deepEqual([await count('front'), await count('archive'), await count('dominated')], [2, 2, 1]);
      assert.deepEqual(await texts(page, '.kind-legend li'),
          ['First frontier (2)', 'In the archive only (2)', 'Dominated (1)', 'Infeasible (3)']);
      assert.deepEqual(await texts(page, '.bound-text'), ['upper bound 400', 'lower bound 4']);
      // The front of Cost and Reach: designs 1, 2, 7 and 3.2, each step across and up.
      assert.match(await page.getAttribute('.front-line', 'd'), /^M\S+ \S+(H\S+?V[\d.]+){3}$/);
    });
    await check('a value of 0 has a place on a logarithmic axis', async () => {
      await show(page, '#/plot?y=2&ylog=1');
      assert.match(await page.textContent('.axis-title'), /logarithmic/);
      assert.ok((await texts(page, '.plot-axes text')).includes('0'));
      // The diamond of design 3.2 stands on the axis; its first point is its top.
      const bottom = Number(await page.locator('.plot-axes .axis').first().getAttribute('y1'));
      const tops = (await page.getAttribute('.plot-points .mark-archive',
          'd')).match(/(?<=M\S+ )[\d.]+/g).map(Number);
      assert.equal(Math.max(...tops) + 7, bottom);
    });
    await check('a front goes from the best of what is maximised, too', async () => {
      await show(page, '#/plot?x=1&y=0');
      const path = await page.getAttribute('.front-line', 'd');
      assert.match(path, /^M\S+ \S+(H\S+?V[\d.]+){3}$/);
      const across = path.match(/(?<=[MH])[\d.]+/g).map(Number);
      assert.deepEqual(across, across.slice().sort((left, right) => right - left));
    });
    await check('all objectives are drawn as lines, and arrow keys go by the chosen one', async () => {
      await page.click('[data-focus=menu-parallel]');
      await page.waitForSelector('.line-front');
      const lines = (await page.locator('.plot-points .line').evaluateAll((paths) =>
          paths.map((path) => path.getAttribute('d')))).join('');
      assert.equal(lines.match(/M/g).length, 8);
      assert.equal(lines.match(/L/g).length, 16);
      await page.selectOption('[data-focus=axis-by]', '1');
      await page.waitForSelector('.axis-name.active:has-text("Reach")');
      await page.focus('.plot-points');
      await page.keyboard.press('Home');
      assert.equal((await page.textContent('.details h2')).trim(), 'Design 6');
      await page.keyboard.press('ArrowDown');
      assert.equal((await page.textContent('.details h2')).trim(), 'Design 6');
      await page.keyboard.press('End');
      await page.keyboard.press('Enter');
      await page.waitForSelector('h1:text-is("Design 3.2")');
    });
    await check('addresses of nothing lead back', async () => {
      await show(page, '#/design/99');
      assert.match(await page.textContent('.problem'), /no design 99/);
      await show(page, '#/nowhere');
      await page.click('text=Go to the table of all designs');
      await page.waitForSelector('.designs');
      assert.deepEqual(page.errors, []);
    });
    await page.context().close();
  });
  await make.withSearch(folder, {...Bounded, model: null}, async (path) => {
    const page = await open(path);
    await check('without the second script bounds are not known, and only the archive is feasible', async () => {
      const known = (await rowsOf(page)).filter((row) => row[5] !== 'Not known').map((row) => [row[0], row[5]]);
      assert.deepEqual(known, [['Design 2', 'Feasible'], ['Design 7', 'Feasible'], ['Design 3.2', 'Feasible']]);
      assert.match(await page.textContent('.bounds-note'), /bounds of the objectives are not known/);
      assert.equal((await cells(page, '.objectives'))[0][2], 'not known');
      assert.deepEqual(page.errors, [MissingScript]);
    });
    await page.context().close();
  });
}

const Hierarchy = {
  state: make.nsga({objectives: {Cost: 'Minimise'}, encoding: 'TreeEncoding', time: '200'}, [[
    {id: 1, values: {Cost: '10.000000'}, encoding: make.tree(
        make.treeNode('DEFAULT::Plant', 'compact', {inside: make.treeNode('DEFAULT::Plant.Pump', 'small',
            {inside: make.treeNode('DEFAULT::Plant.Pump.Motor', 'AC')}) + make.treeNode('DEFAULT::Plant.Valve',
                'steel')}) +
        make.treeNode('DEFAULT::Operator', 'person', {allocation: 'Desk A'}))},
    {id: 2, values: {Cost: '20.000000'}, encoding: make.tree(
        make.treeNode('DEFAULT::Plant', 'compact', {inside: make.treeNode('DEFAULT::Plant.Pump', 'big') +
            make.treeNode('DEFAULT::Plant.Reserve', 'big')}) +
        make.treeNode('DEFAULT::Operator', 'person', {allocation: 'Desk B'}))}]]),
  model: make.modelOf({Cost: [null, null]}),
};

async function checkHierarchy(open) {
  await make.withSearch(folder, Hierarchy, async (path) => {
    const page = await open(path, '#/design/1');
    await check('components inside others stand under them with their allocations', async () => {
      const inside = ', level 2 of the hierarchy';
      assert.deepEqual(await cells(page, '.choices'), [['DEFAULT::Plant', 'compact', '\u2013'],
        ['\u2514Pump' + inside, 'small', '\u2013'], ['\u2514Motor, level 3 of the hierarchy', 'AC', '\u2013'],
        ['\u2514Valve' + inside, 'steel', '\u2013'], ['DEFAULT::Operator', 'person', 'Desk A']]);
      const indents = await page.locator('.choices tbody th').evaluateAll((list) =>
        list.map((cell) => parseFloat(getComputedStyle(cell).paddingInlineStart)));
      assert.ok(indents[0] < indents[1] && indents[1] < indents[2] && indents[3] === indents[1], String(indents));
    });
    await check('two hierarchies are compared component by component', async () => {
      await show(page, '#/compare/1/2');
      const plain = (text) => text.replace(/^\u2514/, '').replace(/,.*/, '');
      assert.deepEqual((await cells(page, '.compare-choices')).map((row) => [plain(row[0]), ...row.slice(1)]), [
        ['DEFAULT::Plant', 'compact', 'compact', 'same'], ['Pump', 'small', 'big', 'differs'],
        ['Motor', 'AC', 'not part of it', 'differs'], ['Reserve', 'not part of it', 'big', 'differs'],
        ['Valve', 'steel', 'not part of it', 'differs'], ['DEFAULT::Operator', 'person, Desk A', 'person, Desk B',
            'differs']]);
      assert.equal((await savedRows(page))[1][0], 'DEFAULT::Plant.Pump');
    });
    await check('one objective has no lines but a plot against itself', async () => {
      assert.equal(await page.locator('[data-focus=menu-parallel]').count(), 0);
      await show(page, '#/plot');
      assert.equal(await page.textContent('.count'), '2 of 2 designs');
      await show(page, '#/parallel');
      assert.match(await page.textContent('.empty'), /fewer than two objectives/);
      await show(page, '#/');
      assert.match(await page.textContent('.figures'), /3 min 20 s/);
      assert.match(await page.textContent('.figures'), /Tree \(hierarchy\)/);
      assert.deepEqual(page.errors, []);
    });
    await page.context().close();
  });
}

const levelDesign = (id, cost, invalids, encoding) =>
    ({id, encoding, values: {ASILCost: String(cost), ASILInvalids: String(invalids)}});
const channel = (sensor, motor, board) =>
    make.treeLevels(make.levelNode('DEFAULT::Left', [['sensor', 2, sensor], ['motor', 3, motor]],
    make.levelNode('DEFAULT::Left.Board', [['chip', 5, board]])));
const flat = (sensor, motor) => make.fixedLevels([['Left:sensor', 'sensor', 2, sensor], ['motor', 'None', 3, motor],
  ['DEFAULT::Unit.chip', 'None', 5, 0]]);
const Levels = {
  state: make.coitGA({objectives: {ASILCost: 'Minimise', ASILInvalids: 'Minimise'}}, [
    levelDesign(0, 120, 1, channel(2, 1, 1)), levelDesign(1, 1100, 0, channel(3, 2, 0)),
        levelDesign(2, 1210, 0, channel(3, 2, 1)),
    levelDesign(3, 110, 9, flat(1, 2))]),
  model: make.modelOf({ASILCost: [null, null], ASILInvalids: [null, '0']}, [
    {name: 'Loss of <b>braking</b>', level: 4, cutSets: [[[2, 'Left.sensor'], [3, 'Left.motor']],
        [[2, 'Left.sensor'], [5, 'Board.chip'], [3, 'Left.motor']]]},
    {name: 'Unwanted braking', level: 0, cutSets: [[[5, 'Board.chip']]]}].map((hazard) =>
    ({...hazard, name: hazard.name.replace(/</g, '&lt;')}))),
};

async function checkLevels(open) {
  await make.withSearch(folder, Levels, async (path) => {
    const page = await open(path);
    await check('a population tells the designs that none dominates, and those with invalid cut sets', async () => {
      assert.deepEqual((await rowsOf(page)).map((row) => [row[0], row[3], row[4]]),
          [['Design 3', 'Population', 'Infeasible'],
        ['Design 0', 'Population', 'Infeasible'], ['Design 1', 'Not dominated', 'Feasible'],
            ['Design 2', 'Population', 'Feasible']]);
      assert.deepEqual(await texts(page, '.kind-legend li'),
          ['Not dominated (1)', 'Dominated (1)', 'Infeasible (2)']);
      assert.match(await page.textContent('.figures'), /Tree \(safety levels\)/);
    });
    await check('a design shows the level of each event and what the levels cost', async () => {
      await show(page, '#/design/0');
      assert.deepEqual(await cells(page, '.choices'),
          [['DEFAULT::Left', 'sensor', '2'], ['DEFAULT::Left', 'motor', '1'],
        ['DEFAULT::Left.Board', 'chip', '1']]);
      assert.deepEqual(await cells(page, '.level-costs'),
          [['Level 2', '1', '100', '100'], ['Level 1', '2', '10', '20'], ['All', '3', '', '120']]);
    });
    await check('cut sets whose levels do not add up are listed with the hazard, and the others are not',
        async () => {
      assert.equal(await page.textContent('.invalid h2'), 'Invalid cut sets (1)');
      assert.deepEqual(await cells(page, '.invalid-sets'),
          [['Loss of <b>braking</b>', 'Left.sensor level 2Left.motor level 1', '3', '4', '1']]);
      assert.match(await savedText(page, 'text=Save invalid cut sets'),
          /Loss of <b>braking<\/b>,3,4,1,"Left.sensor \(2\), Left.motor \(1\)"/);
      await show(page, '#/design/1');
      assert.equal(await page.textContent('.invalid h2'), 'Invalid cut sets (0)');
      assert.match(await page.textContent('.invalid'), /add up to the level of the hazard/);
    });
    await check('a flat list of levels gives each event its owner; another count of the search is told',
        async () => {
      await show(page, '#/design/3');
      assert.deepEqual(await cells(page, '.choices'), [['Left', 'sensor', '1'], ['None', 'motor', '2'],
          ['None', 'DEFAULT::Unit.chip', '0']]);
      assert.equal(await page.textContent('.invalid h2'), 'Invalid cut sets (2)');
      assert.match(await page.textContent('.invalid'), /The search itself counted 9\./);
    });
    await check('levels of two designs are compared event by event', async () => {
      await show(page, '#/compare/0/1');
      assert.deepEqual(await cells(page, '.compare-choices'), [['DEFAULT::Left', 'sensor', '2', '3', 'differs'],
        ['DEFAULT::Left', 'motor', '1', '2', 'differs'], ['DEFAULT::Left.Board', 'chip', '1', '0', 'differs']]);
      assert.deepEqual((await cells(page, '.compare-values')).pop(), ['Invalid cut sets', '1', '0', '']);
      assert.deepEqual(page.errors, []);
    });
    await page.context().close();
  });
  await make.withSearch(folder, {...Levels, model: null}, async (path) => {
    const page = await open(path, '#/design/0');
    await check('without the second script invalid cut sets are not known', async () =>
      assert.match(await page.textContent('.invalid, section:has(> h2:text-is("Invalid cut sets"))'),
          /not known here/));
    await page.context().close();
  });
}

const utf8 = (text) => Buffer.from(text, 'utf8').toString('latin1');
const Names = [
  ['&lt;script&gt;window.ran = true&lt;/script&gt;', '<script>window.ran = true</script>'],
  ['&lt;img src=x onerror=&quot;window.ran = true&quot;&gt;', '<img src=x onerror="window.ran = true">'],
  ['&#x41; &amp; B &amp;amp; C', 'A & B &amp; C'],
  ['the driver\'s \\ pedal', 'the driver\'s \\ pedal'],
  [utf8('Beh\u00e4lter \u2264 5'), 'Beh\u00e4lter \u2264 5'],
  ['bell &#x07; and \u0001', 'bell \ufffd and \ufffd'],
];

async function checkNames(open) {
  const choices = Object.fromEntries(Names.map(([name]) => [name, [[name, 1]]]));
  const value = {[Names[0][0]]: '1.000000', [Names[2][0]]: '2.000000'};
  const state = make.nsga({objectives: {[Names[0][0]]: 'Minimise', [Names[2][0]]: 'None'}, file: Names[1][0]},
      [[{id: 1, encoding: make.fixed(choices), values: value}]]);
  await make.withSearch(folder, {state, model: make.modelOf({[Names[0][0]]: [null, '0.5']})}, async (path) => {
    const page = await open(path);
    await check('names with signs of all kinds are shown as they are', async () => {
      assert.equal(await page.textContent('.search-summary b'), Names[1][1]);
      assert.deepEqual(await texts(page, '.objectives tbody .name'), [Names[0][1], Names[2][1]]);
      await page.fill('input[type=search]', '<SCRIPT> \u2264');
      assert.equal(await page.textContent('.count'), '1 of 1 design');
      await show(page, '#/design/1');
      assert.deepEqual((await cells(page, '.choices')).map((row) => [row[0], row[2]]),
          Names.map(([, name]) => [name, name]));
      assert.equal(await page.textContent('.broken'), Names[0][1] + ' 1 is above 0.5.');
      await show(page, '#/plot');
      assert.match(await page.getAttribute('#PlotOption', 'aria-label'), /A & B &amp; C 2/);
      assert.match(await savedText(page, 'text=Save as SVG'), /&lt;script&gt;/);
      assert.equal(await page.evaluate(() => window.ran), undefined);
      assert.deepEqual(page.errors, []);
    });
    await page.context().close();
  });
}

/// Names of runs come from names of files. Quotation marks break the call in the page, which reports it.
const Runs = ['GA(a b)_Generation5', '100%_#1 & more; [x] {y} +=~,@!', 'GA(the driver\'s car)', 'Gr\u00f6\u00dfe',
    utf8('Gr\u00f6\u00dfe \u2264'),
    'GA("so" \\x &lt; &copy;)'];

async function checkRuns(open) {
  let tab;
  for (const run of Runs) {
    await make.withSearch(folder, {...Hierarchy, run},
        (path) => check('a run called ' + basename(path) + ' finds its files', async () => {
      tab = await open(path, '', {tab});
      assert.equal(await tab.locator('.designs .row').count(), 2);
      const href = await tab.getAttribute('.search-summary a', 'href');
      assert.equal(decodeURIComponent(href), basename(path).replace(/html$/, 'xml'));
      assert.deepEqual(tab.errors.filter((text) => !/missing \)|Invalid or unexpected token/.test(text)), []);
    }));
  }
  await tab.context().close();
}

async function checkBroken(open) {
  let tab;
  /// Opens the page; all it may report are errors with one of the texts in them.
  const withPage = (result, body, known = []) => make.withSearch(folder, result, async (path) => {
    tab = await open(path, '', {tab});
    await body(tab);
    assert.deepEqual(tab.errors.filter((text) => !known.some((part) => text.includes(part))), []);
  });
  const problem = (result, pattern, known) =>
    withPage(result, async (page) => assert.match(await page.textContent('.problem'), pattern), known);
  await check('a state that is missing, broken, cut short or of something else says so', async () => {
    await problem({state: null}, /run\.js is missing or its name has changed/, [MissingScript]);
    await problem({state: null, scripts: {'.js': 'var OptimisationResults = \'it\'s\';'}},
        /run\.js is there, but the browser cannot read it/, ['SyntaxError']);
    await problem({state: Hierarchy.state.slice(0, -30)}, /run\.js is not well formed/, [MissingScript]);
    await problem({state: '<Vel-Tarn_Results model="x"><FaultTrees/></Vel-Tarn_Results>'},
        /holds no state of a search/, [MissingScript]);
  });
  const seconds = [['that no browser reads',
      {model: null, scripts: {'-Model.js': 'var OptimisationModel = \'it\'s\';'}}, /run-Model\.js is there, but/],
    ['that is cut short', {model: '<OptimisationModel><Objectives>'}, /run-Model\.js is not well formed/]];
  for (const [what, result, pattern] of seconds) {
    await check('a second script ' + what + ' is told, and the designs are shown all the same',
        () => withPage({...Bounded, ...result}, async (page) => {
      assert.match(await page.textContent('.problem'), pattern);
      assert.equal(await page.locator('.designs .row').count(), 8);
      assert.equal(await page.locator('.bounds-note').count(), 1);
    }, ['SyntaxError']));
  }
  const strange = [{id: 1, encoding: '<Strange/>', values: {Cost: 'nan'}}, {id: 2, encoding: '', values: {}}];
  await check('a design without an encoding that is known says so', () => withPage({model: make.modelOf({}),
    state: make.nsga({objectives: {Cost: 'Minimise'}}, [strange])}, async (page) => {
    assert.deepEqual((await rowsOf(page)).map((row) => row.slice(0, 2)),
        [['Design 1', 'nan'], ['Design 2', '\u2013']]);
    await show(page, '#/design/1');
    assert.match(await page.textContent('.problem'), /no encoding that these pages can show/);
    await show(page, '#/compare/1/2');
    assert.match(await page.textContent('.problem'), /no encoding/);
    await show(page, '#/plot');
    assert.match(await page.textContent('.details'), /No design is left/);
  }));
  await check('a search that left nothing says so',
      () => withPage({model: make.modelOf({}), state: make.nsga({objectives: {}}, [[]])}, async (page) => {
    assert.equal(await page.textContent('.empty'), 'The search has left no design.');
    await show(page, '#/plot');
    assert.equal(await page.textContent('.empty'), 'The designs have no values.');
  }));
  await tab.context().close();
}

const MostElements = 900;  // In the whole page.

async function checkLarge(open) {
  const count = 5000;
  const designs = Array.from({length: count}, (_, index) => design(index, 100 + index * 7919 % count,
      1 + index % 89, (1 + index * 104729 % count) / 1e5));
  const elements = (page) => page.evaluate(() => document.querySelectorAll('*').length);
  await make.withSearch(folder, {state: make.nsga({objectives: Objectives},
      [designs.slice(0, 200), designs.slice(200)]), model: Bounded.model}, async (path) => {
    const page = await open(path);
    await check('5,000 designs are listed, narrowed and drawn with few elements', async () => {
      assert.equal(await page.textContent('.count'), '5000 of 5000 designs');
      assert.ok(await elements(page) < MostElements, 'list: ' + await elements(page));
      await page.evaluate(() => { document.querySelector('.designs').scrollTop = 1e9; });
      await page.waitForSelector('[aria-rowindex="5001"]');
      assert.match(await page.textContent('[aria-rowindex="5001"]'), /5099/);
      await page.fill('input[type=search]', 'design 4999');
      assert.equal(await page.textContent('.count'), '1 of 5000 designs');
      for (const view of ['plot', 'parallel']) {
        await show(page, '#/' + view);
        const marks = await page.locator('.plot-points g path').evaluateAll((paths) =>
            paths.map((path) => path.getAttribute('d')).join(''));
        assert.ok(marks.match(/M/g).length > 4500, view + ': ' + marks.match(/M/g).length);
        assert.ok(await elements(page) < MostElements, view + ': ' + await elements(page));
      }
      assert.deepEqual(page.errors, []);
    });
    await page.context().close();
  });
}

/// The dark colours differ in contrast only.
const quick = (setting) => (setting.scheme === 'dark' ? {...setting, only: ['color-contrast']} : setting);

async function checkAccess(open) {
  const results = [[Bounded, ['#/?with=2', '#/plot?with=2', '#/parallel', '#/design/5', '#/compare/2/5']],
    [Levels, ['#/design/0']], [Hierarchy, ['#/compare/1/2']]];
  for (const setting of Settings.map(quick)) {
    let tab;
    for (const [result, hashes] of results) {
      await make.withSearch(folder, result, async (path) => {
        tab = await open(path, '', {...setting, tab});
        await tab.evaluate(axeSource);
        for (const hash of hashes) await checkBarriers(tab, hash, setting);
        assert.deepEqual(tab.errors, []);
      });
    }
    await tab.context().close();
  }
}

await withBrowser(async (open) => {
  await checkBounds(open);
  await checkHierarchy(open);
  await checkLevels(open);
  await checkNames(open);
  await checkRuns(open);
  await checkBroken(open);
  await checkLarge(open);
  await checkAccess(open);
});
finish();
