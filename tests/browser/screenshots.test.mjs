// How the viewer looks. A picture may differ from its reference in 0.3 % of its pixels, as browsers of
// different versions draw the edges of letters differently; TTR_RENEW_SCREENSHOTS=1 writes the
// references anew. What differs is written to build/browser/.
import assert from 'node:assert/strict';
import {existsSync, mkdirSync, readFileSync, writeFileSync} from 'node:fs';
import {join} from 'node:path';
import {after, before, test} from 'node:test';
import pixelmatch from 'pixelmatch';
import {PNG} from 'pngjs';
import {everyKind, model, picture, someDiagnostics} from './support/sample_model.mjs';
import {TestBrowser, closeQuietly, root} from './support/viewer_page.mjs';

const references = join(root, 'tests/browser/screenshots');
const reports = join(root, 'build/browser');
const largestShare = 0.003;

const browser = new TestBrowser();
before(() => browser.start());
after(() => browser.stop());

/** The share of pixels in which two PNGs differ; what differs goes to a file. */
function difference(actual, expected, file) {
  const [a, b] = [PNG.sync.read(actual), PNG.sync.read(expected)];
  assert.deepEqual([a.width, a.height], [b.width, b.height]);
  const marked = new PNG({width: a.width, height: a.height});
  const count = pixelmatch(a.data, b.data, marked.data, a.width, a.height, {threshold: 0.04});
  writeFileSync(file, PNG.sync.write(marked));
  return count / (a.width * a.height);
}

async function compare(page, name) {
  await page.addStyleTag({content: ':root { --ui: "DejaVu Sans"; --mono: "DejaVu Sans Mono"; }'});
  await page.evaluate(
    () => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))),
  );
  const actual = await page.screenshot({animations: 'disabled', caret: 'hide'});
  const reference = join(references, `${name}.png`);
  if (process.env.TTR_RENEW_SCREENSHOTS === '1') {
    writeFileSync(reference, actual);
    return;
  }
  assert.ok(
    existsSync(reference),
    `no reference ${reference}: write it with TTR_RENEW_SCREENSHOTS=1`,
  );
  mkdirSync(reports, {recursive: true});
  writeFileSync(join(reports, `${name}.png`), actual);
  const share = difference(
    actual,
    readFileSync(reference),
    join(reports, `${name}-difference.png`),
  );
  assert.ok(share <= largestShare, `${name}: ${(share * 100).toFixed(2)} % differ, see ${reports}`);
}

for (const colorScheme of ['light', 'dark']) {
  test(`the lobby in ${colorScheme}, an element selected, another pointed at`, async () => {
    const page = await browser.openExample('lobby', ['--passes', '3'], {
      colorScheme,
      viewport: {width: 1440, height: 860},
    });
    await page.getByRole('treeitem', {name: 'RenderType 2 "Welcome'}).first().click();
    await page.getByRole('treeitem', {name: 'RenderType 2 "Coffee'}).first().hover();
    await compare(page, `lobby-${colorScheme}`);
    await closeQuietly(page);
  });

  test(`faults in ${colorScheme}`, async () => {
    const sample = [1, 2, 3].map((pass) => picture('1280x720', pass, everyKind(), someDiagnostics));
    const page = await browser.open(
      model([...sample, picture('800x480', 1, everyKind())], {
        outdated: "page.json:3:1: error: Missing ','",
      }),
      {colorScheme, viewport: {width: 1100, height: 700}},
    );
    await page.locator('#diagnostics button').click();
    await page.mouse.move(500, 20);
    await compare(page, `faults-${colorScheme}`);
    await closeQuietly(page);
  });
}

test('the keys', async () => {
  const page = await browser.open(model([picture('1280x720', 1, everyKind())]));
  await page.keyboard.press('?');
  await compare(page, 'keys');
  await closeQuietly(page);
});

test('a narrow window', async () => {
  const page = await browser.open(model([picture('1280x720', 1, everyKind(), someDiagnostics)]), {
    viewport: {width: 480, height: 900},
  });
  await page.getByRole('treeitem', {name: 'copy 0'}).click();
  await compare(page, 'narrow');
  await closeQuietly(page);
});
