// What is told about an element, the diagnostics, and texts that must not become markup.
import assert from 'node:assert/strict';
import {createServer} from 'node:http';
import {after, before, test} from 'node:test';
import {
  diagnostic,
  element,
  everyKind,
  model,
  picture,
  someDiagnostics,
} from './support/sample_model.mjs';
import {TestBrowser, closeQuietly, details, selectedLabel} from './support/viewer_page.mjs';

const browser = new TestBrowser();
before(() => browser.start());
after(() => browser.stop());

const open = (elements = everyKind(), diagnostics = someDiagnostics, overrides = {}) =>
  browser.open(model([picture('1280x720', 1, elements, diagnostics)], overrides));
const pick = (page, name) => page.getByRole('treeitem', {name}).click();

test('details tell places, bounds, the explanation, and the members', async () => {
  const page = await open();
  await pick(page, 'RenderType 2 "Welcome"');
  await page.mouse.move(640, 10);
  assert.deepEqual((await details(page)).split('\n').filter(Boolean), [
    'ELEMENT',
    'RenderType 2 "Welcome"',
    'Template',
    'header.json:5:7',
    'Pointer',
    '/Contents/2',
    'Result',
    '/Page/Contents/2',
    'Bounds',
    'x 116',
    'y 80',
    'w 640',
    'h 48',
    'Within',
    'x 100',
    'y 60',
    'w 1000',
    'h 400',
    'Explanation',
    'Bounds',
    '[116,80,640,48], within 100,60 1000x400 of the screen',
    'x: 116 from 16: 16 + 100 = 116',
    'width: 640 from "50%": 50% of 1280 = 640',
    'token',
    '$(host) in Contents/0: "Ada", by host from values.json',
    'Resolved',
    '{',
    '  "Bounds": [116, 80, 640, 48],',
    '  "Play": {',
    '    "rate": 1.5,',
    '    "loop": true,',
    '    "next": null',
    '  },',
    '  "RenderType": 2',
    '}',
  ]);
  await closeQuietly(page);
});

test('colour words are shown as colours', async () => {
  const page = await open();
  await pick(page, 'RenderType 1');
  assert.match(await details(page), /"Display": \[4278916128 *#0B1420FF\]/);
  const colour = await page
    .locator('.swatch')
    .evaluate((swatch) => getComputedStyle(swatch).backgroundColor);
  assert.equal(colour, 'rgb(11, 20, 32)');
  await closeQuietly(page);
});

test('members of any JSON are shown, and very long ones not to the end', async () => {
  const long = 'y'.repeat(100000);
  const page = await open(
    [
      element(0, null, {kind: 'text', label: 'plain', members: 'just <b>text</b>'}),
      element(1, null, {
        kind: 'other',
        label: 'nested',
        members: [[], {}, [1, [2, {a: [null, false]}]], 'ü', -0.5],
      }),
      element(2, null, {label: 'long', members: {text: long, after: 1}}),
    ],
    [],
  );
  await pick(page, 'plain');
  assert.match(await details(page), /"just <b>text<\/b>"/);
  await pick(page, 'nested');
  const written = await page.locator('#details pre').innerText();
  assert.deepEqual(JSON.parse(written), [[], {}, [1, [2, {a: [null, false]}]], 'ü', -0.5]);
  await pick(page, 'long');
  const shown = await page.locator('#details pre').innerText();
  assert.ok(shown.length < 21000);
  assert.match(shown, /… \(the rest is not shown\)$/);
  await closeQuietly(page);
});

test('diagnostics are counted and listed with all that is known', async () => {
  const page = await open();
  assert.equal(await page.locator('#diagnostic-count').innerText(), '1 error, 1 warning');
  const items = await page.locator('#diagnostics li').allInnerTexts();
  assert.equal(items.length, 2);
  for (const part of [
    'warning',
    'unknown-token',
    '× 3',
    'no handler answers $(rooom.name)',
    'did you mean $(room.name)?',
    'page.json:5:7',
    'included from page.json:3:4',
  ]) {
    assert.ok(items[0].includes(part), part);
  }
  assert.ok(items[1].includes('not-a-colour') && items[1].includes('page.json:9:11'));
  await closeQuietly(page);
});

test('a diagnostic selects its element; one without an element is no button', async () => {
  const page = await open();
  const buttons = page.locator('#diagnostics').getByRole('button');
  assert.equal(await buttons.count(), 1);
  await buttons.first().click();
  assert.equal(await selectedLabel(page), 'copy 1');
  assert.equal(await buttons.first().getAttribute('aria-current'), 'true');
  await pick(page, 'copy 0');
  assert.equal(await buttons.first().getAttribute('aria-current'), 'false');
  await buttons.first().focus();
  await page.keyboard.press('Enter');
  assert.equal(await selectedLabel(page), 'copy 1');
  await closeQuietly(page);
});

test('a picture without diagnostics says so', async () => {
  const page = await open(everyKind(), []);
  assert.ok(await page.locator('#no-diagnostics').isVisible());
  assert.ok(await page.locator('#diagnostics').isHidden());
  assert.equal(await page.locator('#diagnostic-count').innerText(), '');
  await closeQuietly(page);
});

test('an outdated page says why, a current one nothing', async () => {
  const outdated = await open(everyKind(), [], {outdated: "page.json:3:1: error: Missing ','"});
  const banner = outdated.getByRole('alert');
  assert.equal(await banner.innerText(), "OUTDATED: page.json:3:1: error: Missing ','");
  assert.ok(await banner.isVisible());
  await closeQuietly(outdated);
  const current = await open();
  assert.ok(await current.locator('#outdated').isHidden());
  await closeQuietly(current);
});

test('a page of which there is no picture yet says so', async () => {
  const page = await browser.open(model([], {sizes: ['1280x720'], outdated: 'page.json: no JSON'}));
  assert.equal(await page.locator('#empty').innerText(), 'There is no picture.');
  await page.locator('#stage').focus();
  for (const key of ['+', 'n', '.', 'p', 'Escape', 'ArrowDown', '0'])
    await page.keyboard.press(key);
  await closeQuietly(page);
});

test('texts of a template never become markup, scripts or styles', async () => {
  const evil =
    '</script><img src=x onerror="window.broken=1"><script>window.broken=2</script>' +
    '<!--<script>${1}`"\'&lt;';
  const page = await open(
    [
      element(0, null, {
        label: evil,
        place: evil,
        pointer: evil,
        templatePointer: evil,
        kind: evil,
        arithmetic: [evil],
        members: {[evil]: evil, __proto__: 1, constructor: 2},
        bounds: [0, 0, 9, 9],
      }),
    ],
    [
      diagnostic({
        element: 0,
        message: evil,
        code: evil,
        level: evil,
        place: evil,
        suggestion: evil,
        includedFrom: [evil],
      }),
    ],
    {page: evil, outdated: evil},
  );
  await page.getByRole('treeitem').first().click();
  assert.equal(await page.locator('.row .label').textContent(), evil);
  assert.equal(await page.locator('#details h3').innerText(), evil);
  assert.ok((await page.locator('#diagnostics').innerText()).includes(evil));
  assert.ok((await page.locator('#outdated').innerText()).includes(evil));
  assert.equal(await page.locator('img, body script:not(#model):not([nonce])').count(), 0);
  assert.equal(await page.evaluate(() => window.broken), undefined);
  await closeQuietly(page);
});

test('a picture runs no script and changes nothing outside of itself', async () => {
  const asked = [];
  const server = createServer((request, response) => {
    asked.push(request.url);
    response.end();
  });
  await new Promise((done) => server.listen(0, '127.0.0.1', done));
  const sample = model([picture('1280x720', 1, everyKind())]);
  sample.pictures[0].svg =
    '<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 1280 720" onload="window.broken=1">' +
    '<script>window.broken=2</script><style>header, .bar { display: none !important }</style>' +
    '<foreignObject width="9" height="9"><body xmlns="http://www.w3.org/1999/xhtml"><script>window.broken=3</script>' +
    `</body></foreignObject><image href="http://127.0.0.1:${server.address().port}/" onerror="window.broken=4" width="9" height="9"/>` +
    '<g id="tree" class="element" data-id="2"><rect width="50" height="50" onclick="window.broken=5"/></g></svg>';
  const page = await browser.open(sample);
  await page.locator('#picture rect').click({force: true});
  assert.ok(await page.locator('header.bar').isVisible());
  assert.equal(await page.evaluate(() => window.broken), undefined);
  assert.deepEqual(asked, []);
  assert.ok(page.complaints.length > 0, 'the policy of the page refuses what it must');
  assert.deepEqual(
    page.complaints.filter((line) => !/Content Security Policy/.test(line)),
    [],
  );
  await page.context().close();
  server.close();
});
