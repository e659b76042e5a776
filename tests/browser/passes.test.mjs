// Several passes and several sizes of one page.
import assert from 'node:assert/strict';
import {after, before, test} from 'node:test';
import {everyKind, element, model, picture, diagnostic} from './support/sample_model.mjs';
import {
  TestBrowser,
  closeQuietly,
  details,
  pictureBox,
  selectedLabel,
} from './support/viewer_page.mjs';

const browser = new TestBrowser();
before(() => browser.start());
after(() => browser.stop());

const notice = (size, pass) =>
  picture(
    size,
    pass,
    [
      element(0, null, {kind: 'document', label: 'page.json', pointer: ''}),
      element(1, 0, {
        label: `Notice ${pass}`,
        bounds: [50 * pass, 40, 300, 80],
        pointer: '/Page/Contents/0',
      }),
      ...(pass === 3
        ? [element(2, 0, {label: 'Only in the third', pointer: '/Page/Contents/1'})]
        : []),
    ],
    pass === 2 ? [diagnostic({element: 1})] : [],
  );

const rotating = () => browser.open(model([1, 2, 3].map((pass) => notice('1280x720', pass))));
const pass = (page) => page.locator('#pass-text').innerText();
const drawnText = (page) => page.locator('#picture [data-id="1"] text').textContent();

test('one pass has no slider, one size no choice', async () => {
  const page = await browser.open(model([picture('1280x720', 1, everyKind())]));
  assert.ok(await page.locator('#passes').isHidden());
  assert.ok(await page.locator('#sizes').isHidden());
  await page.locator('#stage').focus();
  await page.keyboard.press('.');
  await page.keyboard.press('p');
  assert.equal(await page.getByRole('treeitem').count(), 9);
  await closeQuietly(page);
});

test('the slider shows each pass: picture, tree and diagnostics', async () => {
  const page = await rotating();
  const slider = page.getByRole('slider', {name: 'Pass'});
  await slider.focus();
  assert.equal(await drawnText(page), 'Notice 1');
  await page.keyboard.press('ArrowRight');
  assert.equal(await pass(page), 'Pass 2 of 3');
  assert.equal(await slider.getAttribute('aria-valuetext'), '2 of 3');
  assert.equal(await drawnText(page), 'Notice 2');
  assert.ok((await page.locator('#diagnostics').innerText()).includes('unknown-token'));
  await page.keyboard.press('End');
  assert.equal(await drawnText(page), 'Notice 3');
  assert.equal(await page.getByRole('treeitem').count(), 3);
  assert.ok(await page.locator('#diagnostics').isHidden());
  await closeQuietly(page);
});

/** A page whose passes have more, fewer and other elements in front of those that stay. */
const changing = JSON.stringify({
  Contents: [
    {
      Loop: {
        List: '0,1,2,1',
        Value: 'n',
        Bounds: [],
        Contents: [
          {If: {Condition: '$(n)', Contents: [{Bounds: [9, 9, 90, 30], Contents: ['Some $(n)']}]}},
          {
            Bounds: [9, 200, 400, 100],
            Loop: {
              Start: 0,
              Size: '$(n)',
              Var: 'i',
              CellWidth: 90,
              CellHeight: 30,
              Layout: [[[0, 0], [100, 0]]],
              Contents: [{Bounds: [0, 0, '100%', 30], Contents: ['Cell $(i) of $(n)']}],
            },
          },
          {
            If: {
              Condition: '$(n)',
              Equals: 2,
              Contents: ['Two', {Bounds: [200, 9, 90, 30], Contents: ['More', '$(no)']}],
            },
          },
        ],
      },
    },
    {Bounds: [9, 90, 300, 40], Contents: ['Always']},
    {Bounds: ['50%', 90, 300, 40], Display: ['#FF000000'], Contents: ['there']},
  ],
});

/** All that a page shows of its pass, but for the numbers of elements. */
async function shown(page) {
  const svg = await page.locator('#picture svg').first().innerHTML();
  return {
    svg: svg.replace(/ data-id="\d+"/g, ''),
    tree: await page.locator('.row').allTextContents(),
    diagnostics: await page.locator('#diagnostics').innerText(),
  };
}

test('forth and back through passes that add, change and remove elements', async () => {
  const page = await browser.openTemplate(changing, {});
  assert.equal(await pass(page), 'Pass 1 of 4');
  const alone = [];
  for (const number of ['1', '2', '3', '4']) {
    const one = await browser.openTemplate(changing, {}, {}, ['--pass', number, '--passes', '1']);
    alone.push(await shown(one));
    await closeQuietly(one);
  }
  assert.equal(new Set(alone.map((entry) => entry.tree.length)).size, 3);
  assert.equal(new Set(alone.map((entry) => entry.svg)).size, 3);
  await page.locator('#stage').focus();
  const order = [1, 2, 3, 4, 3, 2, 3, 4, 1, 4, 1];
  for (const [index, number] of order.entries()) {
    if (index > 0) {
      const next = (order[index - 1] % 4) + 1;
      await page.keyboard.press(number === next ? '.' : ',');
    }
    assert.match(await pass(page), new RegExp(`^Pass ${number} `));
    assert.deepEqual(await shown(page), alone[number - 1], `pass ${number}`);
  }
  await page.getByRole('treeitem', {name: 'Always'}).first().click();
  for (let step = 0; step < 4; ++step) {
    assert.match(await selectedLabel(page), /Always/);
    assert.match(await page.locator('#selected-frame .tag').textContent(), /300 × 40/);
    await page.keyboard.press('.');
  }
  await closeQuietly(page);
});

test('passes need not begin with the first', async () => {
  const page = await browser.open(model([notice('1280x720', 3), notice('1280x720', 4)]));
  assert.equal(await pass(page), 'Pass 3 (3 to 4)');
  await page.locator('#stage').focus();
  const seen = [];
  for (const key of ['.', '.', ',']) {
    await page.keyboard.press(key);
    seen.push(await drawnText(page));
  }
  assert.deepEqual(seen, ['Notice 4', 'Notice 3', 'Notice 4']);
  assert.equal(await page.getByRole('slider').inputValue(), '4');
  await closeQuietly(page);
});

test('comma and full stop go through the passes, around the ends', async () => {
  const page = await rotating();
  await page.locator('#stage').focus();
  const seen = [];
  for (const key of ['.', '.', '.', ',', ',']) {
    await page.keyboard.press(key);
    seen.push(await drawnText(page));
  }
  assert.deepEqual(seen, ['Notice 2', 'Notice 3', 'Notice 1', 'Notice 3', 'Notice 2']);
  await closeQuietly(page);
});

test('playing goes on by itself until it is paused', async () => {
  const page = await rotating();
  await page.clock.install();
  await page.clock.pauseAt(Date.now() + 3600000);
  await page.getByRole('button', {name: 'Play the passes'}).click();
  const seen = [];
  for (let i = 0; i < 4; ++i) {
    await page.clock.runFor(1500);
    seen.push(await drawnText(page));
  }
  assert.deepEqual(seen, ['Notice 2', 'Notice 3', 'Notice 1', 'Notice 2']);
  await page.getByRole('button', {name: 'Pause the passes'}).click();
  await page.clock.runFor(6000);
  assert.equal(await drawnText(page), 'Notice 2');
  await page.locator('#stage').focus();
  await page.keyboard.press('p');
  await page.clock.runFor(1500);
  assert.equal(await drawnText(page), 'Notice 3');
  await page.getByRole('slider').fill('1');
  await page.clock.runFor(6000);
  assert.equal(await drawnText(page), 'Notice 1', 'who moves the slider wants to look');
  await closeQuietly(page);
});

test('selection, focus, closed elements and zoom stay from pass to pass', async () => {
  const page = await rotating();
  await page.getByRole('treeitem', {name: 'Notice 1'}).click();
  await page.keyboard.press('1');
  const before = await pictureBox(page);
  await page.keyboard.press('.');
  assert.equal(await selectedLabel(page), 'Notice 2');
  assert.equal(
    await page.evaluate(() => document.activeElement.querySelector('.label').textContent),
    'Notice 2',
  );
  assert.match(await details(page), /Notice 2/);
  assert.deepEqual(await pictureBox(page), before);
  await page.keyboard.press('ArrowUp');
  await page.keyboard.press('ArrowLeft');
  await page.keyboard.press('.');
  assert.equal(await page.locator('.row:not([hidden])').count(), 1);
  await closeQuietly(page);
});

test('an element that the next pass lacks is no longer selected', async () => {
  const page = await rotating();
  await page.getByRole('slider').fill('3');
  await page.getByRole('treeitem', {name: 'Only in the third'}).click();
  await page.keyboard.press(',');
  assert.equal(await selectedLabel(page), '');
  assert.doesNotMatch(await details(page), /third/);
  await closeQuietly(page);
});

test('the screen is chosen among the sizes, each fitted', async () => {
  const small = (number) =>
    picture('800x480', number, [
      element(0, null, {label: `Small ${number}`, bounds: [0, 0, 800, 480]}),
    ]);
  const page = await browser.open(model([notice('1280x720', 1), notice('1280x720', 2), small(1)]));
  assert.ok(await page.locator('#passes').isVisible());
  await page.keyboard.press('.');
  const choice = page.getByRole('combobox', {name: 'Screen'});
  assert.deepEqual(await choice.locator('option').allInnerTexts(), ['1280 × 720', '800 × 480']);
  await choice.selectOption('800x480');
  const box = await pictureBox(page);
  assert.ok(Math.abs(box.width / box.height - 800 / 480) < 0.01, JSON.stringify(box));
  assert.equal(await page.getByRole('treeitem').locator('.label').textContent(), 'Small 1');
  assert.ok(await page.locator('#passes').isHidden(), 'this size has one pass');
  await choice.selectOption('1280x720');
  assert.equal(await drawnText(page), 'Notice 1');
  await closeQuietly(page);
});
