// No barriers: every view by the rules of WCAG AA, light, dark and narrow.
import assert from 'node:assert/strict';
import {axeSource, checkBarriers, Settings} from './barriers.mjs';
import {finish, resultFolders, withBrowser} from './browser.mjs';
import {readExpected} from './expected.mjs';
import * as make from './model.mjs';

async function checkViews(open, folder, views) {
  for (const setting of Settings) {
    const page = await open(folder, '', setting);
    await page.evaluate(axeSource);
    for (const hash of views) await checkBarriers(page, hash, setting);
    assert.deepEqual(page.errors, []);
    await page.context().close();
  }
}

const [folder] = resultFolders();
const {trees: [tree]} = readExpected(folder);
const way = '#/tree/' + tree.id;

// What the example has none of: safety allocations, warnings, and a script that is broken.
const result = {
  trees: make.tree(9, 'Top', {top: make.gate('Or', 9, 'Top', make.use(1))}), cutSets: {},
  after: make.allocations([{id: 0, cost: 10, nodes: make.encodingNode('DEFAULT::Unit', [['stuck', 1]])}]) +
      '<WarningList><Warning>Careful</Warning></WarningList>',
  scripts: {CutSets_9: 'var CutSets_9 = \'it\'s broken\';'},
};

await withBrowser(async (open) => {
  await checkViews(open, folder, ['#/', way, way + '/drawing', way + '/outline', way + '/cutsets',
    way + '/cutsets?event=' + tree.cutSets[0].events[0], '#/fmea']);
  await make.withResult(folder, result, async (made) => {
    for (const setting of Settings) {
      const page = await open(made, '', setting);
      await page.evaluate(axeSource);
      for (const hash of ['#/', '#/allocations', '#/allocations/0', '#/warnings', way]) await checkBarriers(page, hash, setting);
      await page.context().close();
    }
  });
});
finish();
