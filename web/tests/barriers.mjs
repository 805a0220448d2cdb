// Barriers of a view by the rules of WCAG AA, and its width.
import assert from 'node:assert/strict';
import {readFileSync} from 'node:fs';
import {createRequire} from 'node:module';
import {check, show} from './browser.mjs';

/// A page needs it before its views are checked.
export const axeSource = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

export const Settings = [{width: 1280, scheme: 'light'}, {width: 1280, scheme: 'dark'},
    {width: 360, scheme: 'light'}];

/// All rules, or only those of the setting.
export async function checkBarriers(page, hash, {width, scheme, only}) {
  await check('no barrier at ' + hash + ', ' + width + ' wide, ' + scheme, async () => {
    await show(page, hash);
    // Style sheets beside a page on disk cannot be fetched, and axe can do without.
    const {violations} = await page.evaluate((rules) => window.axe.run({preload: false, resultTypes: ['violations'],
      ...(rules ? {runOnly: rules} : {})}), only);
    assert.deepEqual(violations.map((found) => found.id + ': ' + found.nodes[0].html), []);
    const [shown, available] = await page.evaluate(() =>
      [document.documentElement.scrollWidth, document.documentElement.clientWidth]);
    assert.ok(shown <= available, 'the page is wider than its window: ' + shown);
  });
}
