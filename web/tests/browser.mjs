// A browser for the tests, and the way they report.
import {existsSync, readFileSync} from 'node:fs';
import {resolve} from 'node:path';
import {pathToFileURL} from 'node:url';
import {chromium} from 'playwright-core';

const Arguments = ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
  '--disable-background-networking', '--disable-component-update', '--disable-sync'];

/// What a browser reports about a script that is not there.
export const MissingScript = 'Failed to load resource: net::ERR_FILE_NOT_FOUND';

let failures = 0;
let checks = 0;

/// Runs one check. A failing one is told and counted, and the next runs all the same.
export async function check(sentence, body) {
  ++checks;
  try {
    await body();
  } catch (error) {
    ++failures;
    console.error('FAILED: ' + sentence + '\n  ' + (error.stack || error).toString().replace(/\n/g, '\n  '));
  }
}

/// The folders named on the command line; ends the run when one holds no pages.
export function resultFolders() {
  const folders = process.argv.slice(2).map((name) => resolve(name));
  const missing = folders.filter((folder) => !existsSync(folder + '/Index.html'));
  if (folders.length === 0 || missing.length > 0) {
    console.error('usage: node ' + process.argv[1] + ' <folder with Index.html>...' +
        missing.map((folder) => '\nno Index.html in ' + folder).join(''));
    process.exit(2);
  }
  return folders;
}

/// Gives the body a function that opens pages: open(folder, hash, {width, scheme}) -> page; instead of a
/// folder with Index.html it takes the path of a page. Whatever a page writes to its console as an error is
/// in `page.errors`; a request beyond the disk is one, too. A page that was opened before is used again when
/// it is given as `tab`.
export async function withBrowser(body) {
  const browser = await chromium.launch(
      {executablePath: process.env.CHROMIUM || '/usr/bin/chromium', args: Arguments});
  const openTab = async ({width = 1280, scheme = 'light'}) => {
    const context = await browser.newContext({viewport: {width, height: 800}, colorScheme: scheme,
      acceptDownloads: true, permissions: ['clipboard-read', 'clipboard-write']});
    const page = await context.newPage();
    page.setDefaultTimeout(30000);
    page.errors = [];
    page.on('console', (message) => {
      if (message.type() === 'error') page.errors.push(message.text());
    });
    page.on('pageerror', (error) => page.errors.push(String(error)));
    page.on('request', (request) => {
      if (!/^(file|blob|data):/.test(request.url())) page.errors.push('network: ' + request.url());
    });
    return page;
  };
  const open = async (folder, hash = '', {tab, ...setting} = {}) => {
    const page = tab || await openTab(setting);
    page.errors = [];
    await page.goto(pathToFileURL(folder.endsWith('.html') ? folder : folder + '/Index.html').href + hash);
    await page.waitForSelector('[role="main"] h1');
    return page;
  };
  try {
    await body(open);
  } finally {
    await browser.close();
  }
}

/// Goes to another view of the same page, as a link would.
export const show = (page, hash) => page.evaluate((address) => new Promise((resolve) => {
  if (window.location.hash === address) {
    resolve();
    return;
  }
  window.addEventListener('hashchange', () => resolve(), {once: true});
  window.location.hash = address;
}), hash);

/// The text of the file that a click on the button saves.
export async function savedText(page, button) {
  const [download] = await Promise.all([page.waitForEvent('download'), page.click(button)]);
  return readFileSync(await download.path(), 'utf8');
}

/// The rows of a saved CSV file as lists of texts, without its head.
export async function savedRows(page, button = 'text=Save as CSV') {
  const lines = (await savedText(page, button)).trim().split('\r\n').slice(1);
  return lines.map((line) => Array.from(line.matchAll(/(?:^|,)(?:"((?:[^"]|"")*)"|([^,"]*))/g),
      ([, quoted, plain]) => (quoted === undefined ? plain : quoted.replace(/""/g, '"'))));
}

/// Ends the run with the number of failures as far as an exit status can say it.
export function finish() {
  console.log((checks - failures) + ' of ' + checks + ' checks passed');
  process.exit(failures === 0 ? 0 : 1);
}
