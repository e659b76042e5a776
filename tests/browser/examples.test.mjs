// Pages as `ttr preview` writes them.
import assert from 'node:assert/strict';
import {readFileSync} from 'node:fs';
import {join} from 'node:path';
import {after, before, test} from 'node:test';
import {
  TestBrowser,
  closeQuietly,
  details,
  middleOf,
  root,
  selectedLabel,
} from './support/viewer_page.mjs';

const browser = new TestBrowser();
before(() => browser.start());
after(() => browser.stop());

const lobbyNotices = JSON.parse(
  readFileSync(join(root, 'examples/lobby/values.json'), 'utf8'),
).notices.map((notice) => notice.title);

/** The notice of the lobby that is in the picture and in the tree. */
async function shownNotice(page) {
  const drawn = (await page.locator('#picture svg').first().textContent()).replace(/\s+/g, ' ');
  const rows = (await page.locator('.row .label').allTextContents()).join('\n');
  const found = lobbyNotices.filter((title) => drawn.includes(title));
  assert.deepEqual(
    found,
    lobbyNotices.filter((title) => rows.includes(title)),
    'tree and picture agree',
  );
  assert.equal(found.length, 1);
  return found[0];
}

test('sees five passes of a rotating notice', async () => {
  const page = await browser.openExample('lobby', ['--passes', '5']);
  // A rotating loop advances before each pass, the first included.
  const expected = [1, 2, 0, 1, 2].map((index) => lobbyNotices[index]);
  const slider = page.getByRole('slider', {name: 'Pass'});
  assert.equal(await slider.getAttribute('max'), '5');
  await slider.focus();
  const byHand = [await shownNotice(page)];
  for (let i = 0; i < 4; ++i) {
    await page.keyboard.press('ArrowRight');
    byHand.push(await shownNotice(page));
  }
  assert.deepEqual(byHand, expected);
  assert.equal(await page.locator('#pass-text').innerText(), 'Pass 5 of 5');
  await page.clock.install();
  await page.clock.pauseAt(Date.now() + 3600000);
  await page.getByRole('button', {name: 'Play the passes'}).click();
  const played = [];
  for (let i = 0; i < 5; ++i) {
    await page.clock.runFor(1500);
    played.push(await shownNotice(page));
  }
  assert.deepEqual(played, expected);
  await closeQuietly(page);
});

for (const name of ['departures', 'lobby', 'menu']) {
  test(`${name}: all that is drawn is in the tree, selects its row, and lies where its bounds say`, async () => {
    const page = await browser.openExample(name, ['--passes', '1']);
    const drawn = await page
      .locator('#picture [data-id]')
      .evaluateAll((groups) => groups.map((group) => group.getAttribute('data-id')));
    assert.ok(drawn.length > 10, `${drawn.length} drawn`);
    assert.equal(new Set(drawn).size, drawn.length);
    const elements = new Map(
      await page.evaluate(() =>
        JSON.parse(document.getElementById('model').textContent).elements.map(
          (entry) => [String(entry.id), entry],
        ),
      ),
    );
    assert.equal(await page.locator('.row').count(), elements.size);
    for (const id of drawn) {
      await page.locator(`.row[data-element="${id}"]`).click();
      assert.equal(await selectedLabel(page), elements.get(id).label);
      const frame = page.locator('#selected-frame');
      const [x, y, width, height] = elements.get(id).bounds;
      assert.equal(await frame.locator('.tag').textContent(), `${width} × ${height}`);
      if (x < 0 || y < 0 || x + width > 1280 || y + height > 720) continue;
      const [around, rect] = [
        await frame.boundingBox(),
        await page.locator(`#picture [data-id="${id}"] > rect`).first().boundingBox(),
      ];
      for (const side of ['x', 'y', 'width', 'height']) {
        assert.ok(
          Math.abs(around[side] - rect[side]) < 2.5,
          `${id} ${side}: ${around[side]} ${rect[side]}`,
        );
      }
    }
    await closeQuietly(page);
  });
}

test('an element of an included file names that file and how it came to its bounds', async () => {
  const page = await browser.openExample('lobby', ['--passes', '1']);
  const row = page.getByRole('treeitem', {name: 'RenderType 2 "Welcome to Harbour House"'}).first();
  const at = await middleOf(page, await row.getAttribute('data-element'));
  await page.mouse.move(at.x, at.y);
  const shown = await details(page);
  assert.match(shown, /header\.json:5:5\n/);
  assert.match(shown, /\/Contents\/2/);
  assert.match(shown, /\b640\b/);
  assert.match(shown, /Explanation\nBounds\n[^\n]*within [^\n]*\nx: /);
  assert.match(shown, /"RenderType": 2/);
  await closeQuietly(page);
});

test('a condition that does not hold is in the tree as null, with its place', async () => {
  const page = await browser.openExample('lobby', ['--passes', '1']);
  const nulls = await page.locator('.row.null').allTextContents();
  assert.ok(nulls.length > 0);
  const lines = readFileSync(join(root, 'examples/lobby/template.json'), 'utf8').split('\n');
  const alarm = lines.findIndex((line) => line.includes('alarm.level')) - 1; // the element begins two lines before
  assert.ok(
    nulls.some((text) => text.includes(`template.json:${alarm}:`)),
    `${alarm}: ${nulls.join('; ')}`,
  );
  await closeQuietly(page);
});

test('two sizes can be switched', async () => {
  const page = await browser.openExample('lobby', [
    '--size',
    '1280x720',
    '--size',
    '800x480',
    '--passes',
    '1',
  ]);
  await page.getByRole('combobox', {name: 'Screen'}).selectOption('800x480');
  assert.equal(
    await page.locator('#stage').getAttribute('aria-label'),
    'Picture of template.json, 800 by 480',
  );
  const first = page
    .locator('.row')
    .filter({has: page.locator('.label')})
    .nth(1);
  await first.click();
  assert.match(await details(page), /w 800\s+h 480/);
  await closeQuietly(page);
});

test('faults are listed with their places, and lead to their elements', async () => {
  const page = await browser.openTemplate(
    '{"Contents": [\n  {"Bounds": [0, 0, 100, 50], "Display": ["red"], "Contents": ["fine"]},\n' +
      '  {"Bounds": [0, 60, "%50", 50], "Contents": ["$(rooom.name)"]}\n]}',
    {room: {name: 'Elbe'}},
  );
  const items = page.locator('#diagnostics li');
  const texts = await items.allInnerTexts();
  assert.ok(
    texts.some((text) => text.includes('page.json:2:')),
    texts.join('\n'),
  );
  assert.ok(
    texts.some((text) => text.includes('page.json:3:') && text.includes('rooom')),
    texts.join('\n'),
  );
  await page.locator('#diagnostics button').filter({hasText: 'page.json:3:'}).first().click();
  assert.match(await details(page), /page\.json:3:/);
  await closeQuietly(page);
});

test('texts of a template neither end the data nor become markup', async () => {
  const evil = '</script><!--<script><img src=x onerror=window.broken=1>]]>&amp;"\u2028';
  const page = await browser.openTemplate(
    JSON.stringify({
      Contents: [
        {Bounds: [0, 0, 400, 100], RenderType: 2, Contents: [evil], [evil]: evil},
        {Bounds: [0, 100, 400, 100], Contents: ['$(evil)']},
      ],
    }),
    {evil},
  );
  assert.ok((await page.getByRole('treeitem').count()) >= 3);
  await page.getByRole('treeitem').nth(1).click();
  assert.ok((await details(page)).includes('</script><!--<script>'));
  assert.equal(await page.locator('img').count(), 0);
  assert.equal(await page.evaluate(() => window.broken), undefined);
  await closeQuietly(page);
});
