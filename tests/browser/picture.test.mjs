// The picture: pointing, selecting, zooming, moving, and its frames.
import assert from 'node:assert/strict';
import {after, before, test} from 'node:test';
import {element, everyKind, model, picture} from './support/sample_model.mjs';
import {
  TestBrowser,
  closeQuietly,
  details,
  middleOf,
  pictureBox,
  selectedLabel,
} from './support/viewer_page.mjs';

const browser = new TestBrowser();
before(() => browser.start());
after(() => browser.stop());

const open = (elements = everyKind(), options = {}) =>
  browser.open(model([picture('1280x720', 1, elements)]), options);

const stageBox = (page) => page.locator('#stage').boundingBox();
const zoomLevel = async (page) => parseInt(await page.locator('#zoom-level').innerText(), 10);
const near = (actual, expected, what) =>
  assert.ok(Math.abs(actual - expected) < 1, `${what}: ${actual} is not near ${expected}`);

test('the whole picture is shown at first, in the middle', async () => {
  const page = await open();
  const [stage, box] = [await stageBox(page), await pictureBox(page)];
  near(box.x - stage.x, stage.x + stage.width - box.x - box.width, 'left and right');
  near(box.y - stage.y, stage.y + stage.height - box.y - box.height, 'top and bottom');
  assert.ok(box.width < stage.width && box.width > stage.width - 60);
  near(box.width / box.height, 1280 / 720, 'ratio');
  await closeQuietly(page);
});

test('pointing at an element shows what it is, and leaving it ends that', async () => {
  const page = await open();
  const at = await middleOf(page, 2);
  await page.mouse.move(at.x, at.y);
  const shown = await details(page);
  assert.match(shown, /RenderType 2 "Welcome"/);
  assert.match(shown, /header\.json:5:7/);
  assert.match(shown, /x: 116 from 16: 16 \+ 100 = 116/);
  assert.match(shown, /"RenderType": 2/);
  assert.equal(await page.locator('.row.hovered .label').textContent(), 'RenderType 2 "Welcome"');
  assert.ok(await page.locator('#hovered-frame').isVisible());
  await page.mouse.move(640, 10);
  assert.doesNotMatch(await details(page), /Welcome/);
  assert.ok(await page.locator('#hovered-frame').isHidden());
  assert.equal(await page.locator('.row.hovered').count(), 0);
  await closeQuietly(page);
});

test('pointing elsewhere shows that, and then again what is selected', async () => {
  const page = await open();
  const [welcome, copy] = [await middleOf(page, 2), await middleOf(page, 6)];
  await page.mouse.click(welcome.x, welcome.y);
  await page.mouse.move(copy.x, copy.y);
  assert.match(await details(page), /copy 0/);
  await page.mouse.move(640, 10);
  assert.match(await details(page), /Welcome/);
  await closeQuietly(page);
});

test('the frame lies around the selected element, with its size, whatever the zoom', async () => {
  const page = await open();
  const at = await middleOf(page, 2);
  await page.mouse.click(at.x, at.y);
  for (const key of ['', '+', '1', '0']) {
    if (key) await page.keyboard.press(key);
    const frame = await page.locator('#selected-frame').boundingBox();
    const drawn = await page.locator('#picture [data-id="2"] > rect').boundingBox();
    const stage = await stageBox(page);
    if (drawn.x > stage.x) near(frame.x, drawn.x, `left after ${key}`);
    near(frame.y, drawn.y, `top after ${key}`);
    near(frame.height, drawn.height, `height after ${key}`);
  }
  assert.equal(await page.locator('#selected-frame .tag').innerText(), '640 × 48');
  const enclosing = await page.locator('#enclosing-frame').boundingBox();
  const zoom = (await pictureBox(page)).width / 1280;
  near(enclosing.width, 1000 * zoom, 'width of the enclosing bounds');
  await closeQuietly(page);
});

test('a click beside all elements, or Escape, selects nothing', async () => {
  const page = await open();
  for (const leave of [() => page.mouse.click(630, 70), () => page.keyboard.press('Escape')]) {
    const at = await middleOf(page, 7);
    await page.mouse.click(at.x, at.y);
    assert.equal(await selectedLabel(page), 'copy 1');
    await leave();
    assert.equal(await selectedLabel(page), '');
    assert.ok(await page.locator('#selected-frame').isHidden());
  }
  await closeQuietly(page);
});

test('a text without bounds is framed by its element, a loop by its copies', async () => {
  const page = await open();
  const zoom = (await pictureBox(page)).width / 1280;
  const frame = page.locator('#selected-frame');
  await page.getByRole('treeitem', {name: 'text Welcome', exact: true}).click();
  near((await frame.boundingBox()).width, 640 * zoom, 'the text');
  assert.match(await frame.getAttribute('class'), /borrowed/);
  await page.getByRole('treeitem', {name: 'Loop over'}).click();
  near((await frame.boundingBox()).width, 420 * zoom, 'the loop');
  await closeQuietly(page);
});

test('the wheel zooms around the pointer', async () => {
  const page = await open();
  const at = await middleOf(page, 6);
  const before = await zoomLevel(page);
  await page.mouse.move(at.x, at.y);
  await page.mouse.wheel(0, -400);
  await page.waitForFunction(
    (level) => parseInt(document.getElementById('zoom-level').textContent) > level,
    before,
  );
  const now = await middleOf(page, 6);
  near(now.x, at.x, 'x');
  near(now.y, at.y, 'y');
  await page.mouse.wheel(0, 400);
  await page.waitForFunction(
    (level) => parseInt(document.getElementById('zoom-level').textContent) === level,
    before,
  );
  await closeQuietly(page);
});

test('buttons and keys zoom in, out, to the actual size, and to fit', async () => {
  const page = await open();
  const fitting = await zoomLevel(page);
  const ways = [
    {
      inwards: () => page.getByRole('button', {name: 'Zoom in'}).click(),
      outwards: () => page.getByRole('button', {name: 'Zoom out'}).click(),
      one: () => page.getByRole('button', {name: '1:1'}).click(),
      fit: () => page.getByRole('button', {name: 'Fit'}).click(),
    },
    {
      inwards: () => page.keyboard.press('+'),
      outwards: () => page.keyboard.press('-'),
      one: () => page.keyboard.press('1'),
      fit: () => page.keyboard.press('0'),
    },
  ];
  for (const way of ways) {
    await way.inwards();
    assert.ok((await zoomLevel(page)) > fitting);
    await way.outwards();
    await way.outwards();
    assert.ok((await zoomLevel(page)) < fitting);
    await way.one();
    assert.equal(await zoomLevel(page), 100);
    assert.equal((await pictureBox(page)).width, 1280);
    await way.fit();
    assert.equal(await zoomLevel(page), fitting);
    await page.locator('#stage').focus();
  }
  await closeQuietly(page);
});

test('the picture fits again when the window changes, until it was zoomed', async () => {
  const page = await open();
  const before = await zoomLevel(page);
  await page.setViewportSize({width: 1600, height: 900});
  await page.waitForFunction(
    (level) => parseInt(document.getElementById('zoom-level').textContent) > level,
    before,
  );
  await page.getByRole('button', {name: '1:1'}).click();
  await page.setViewportSize({width: 1100, height: 700});
  await page.evaluate(
    () => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))),
  );
  assert.equal(await zoomLevel(page), 100);
  await closeQuietly(page);
});

test('dragging moves the picture and selects nothing', async () => {
  const page = await open();
  const before = await pictureBox(page);
  const at = await middleOf(page, 2);
  await page.mouse.move(at.x, at.y);
  await page.mouse.down();
  await page.mouse.move(at.x + 40, at.y + 10, {steps: 4});
  await page.mouse.move(at.x + 90, at.y - 60, {steps: 4});
  await page.mouse.up();
  const now = await pictureBox(page);
  near(now.x - before.x, 90, 'to the right');
  near(now.y - before.y, -60, 'upwards');
  assert.equal(await selectedLabel(page), '');
  await closeQuietly(page);
});

test('arrow keys and the space bar move the picture', async () => {
  const page = await open();
  await page.locator('#stage').focus();
  const moved = async (key) => {
    const before = await pictureBox(page);
    await page.keyboard.press(key);
    const now = await pictureBox(page);
    return [Math.round(now.x - before.x), Math.round(now.y - before.y)];
  };
  assert.deepEqual(await moved('ArrowRight'), [-50, 0]);
  assert.deepEqual(await moved('ArrowLeft'), [50, 0]);
  assert.deepEqual(await moved('ArrowDown'), [0, -50]);
  assert.deepEqual(await moved('ArrowUp'), [0, 50]);
  assert.deepEqual(await moved('Shift+ArrowRight'), [-200, 0]);
  await page.keyboard.press('0');
  for (let i = 0; i < 5; ++i) await page.keyboard.press('+');
  const page80 = Math.round((await stageBox(page)).height * 0.8);
  const [, down] = await moved('Space');
  assert.ok(Math.abs(down + page80) <= 1, `${down}`);
  const [, up] = await moved('Shift+Space');
  assert.ok(Math.abs(up - page80) <= 1, `${up}`);
  await closeQuietly(page);
});

test('the picture cannot be moved out of sight', async () => {
  const page = await open();
  await page.locator('#stage').focus();
  for (const key of ['ArrowRight', 'ArrowDown', 'ArrowLeft', 'ArrowUp']) {
    for (let i = 0; i < 12; ++i) await page.keyboard.press(`Shift+${key}`);
    const [stage, box] = [await stageBox(page), await pictureBox(page)];
    assert.ok(box.x < stage.x + stage.width && box.x + box.width > stage.x, key);
    assert.ok(box.y < stage.y + stage.height && box.y + box.height > stage.y, key);
  }
  await closeQuietly(page);
});

test('N and Shift+N go through the elements that are drawn', async () => {
  const page = await open();
  await page.locator('#stage').focus();
  const labels = [];
  for (const key of ['n', 'n', 'n', 'Shift+N', 'Shift+N', 'Shift+N']) {
    await page.keyboard.press(key);
    labels.push(await selectedLabel(page));
  }
  assert.deepEqual(labels, [
    'RenderType 1',
    'RenderType 2 "Welcome"',
    'copy 0',
    'RenderType 2 "Welcome"',
    'RenderType 1',
    'far away',
  ]);
  await closeQuietly(page);
});

test('the place of the pointer is told in units of the screen', async () => {
  const page = await open();
  await page.keyboard.press('1');
  const at = await middleOf(page, 7);
  await page.mouse.move(at.x, at.y);
  assert.equal(await page.locator('#position').innerText(), '420, 380');
  await page.mouse.move(20, 20);
  assert.ok(await page.locator('#position').isHidden());
  await closeQuietly(page);
});

test('selecting an element out of sight brings it there', async () => {
  const page = await open();
  await page.locator('#stage').focus();
  for (let i = 0; i < 10; ++i) await page.keyboard.press('+');
  await page.getByRole('treeitem', {name: 'far away'}).click();
  const [stage, at] = [
    await stageBox(page),
    await page.locator('#picture [data-id="8"] > rect').boundingBox(),
  ];
  assert.ok(at.x < stage.x + stage.width && at.x + at.width > stage.x);
  assert.ok(at.y < stage.y + stage.height && at.y + at.height > stage.y);
  await closeQuietly(page);
});

test('bounds of any size and kind are shown without harm', async () => {
  const far = 2147483647;
  const page = await open([
    element(0, null, {
      label: 'huge',
      bounds: [-far, -far, far, far],
      enclosing: [0, 0, far, far],
      offScreen: true,
    }),
    element(1, null, {label: 'negative', bounds: [300, 300, -50, -20]}),
    element(2, null, {label: 'empty', bounds: [300, 300, 0, 0]}),
    element(3, null, {label: 'odd', bounds: [2.5, null, 'x', 0]}),
    element(4, null, {label: 'short', bounds: []}),
  ]);
  for (const label of ['huge', 'negative', 'empty', 'odd', 'short']) {
    await page.getByRole('treeitem', {name: label}).click();
    assert.match(await details(page), new RegExp(label));
  }
  await page.getByRole('treeitem', {name: 'odd'}).click();
  assert.match(await details(page), /x 2\.5\s+y null\s+w "x"\s+h 0/);
  await closeQuietly(page);
});

test('a picture may show more than the screen', async () => {
  const sample = picture('1280x720', 1, everyKind());
  sample.svg = sample.svg
    .replace('viewBox="0 0 1280 720"', 'viewBox="-100 -50 1780 820"')
    .replace(
      '</svg>',
      '<rect x="-100" y="-50" width="1780" height="820" fill-opacity="0.1"/></svg>',
    );
  const page = await browser.open(model([sample]));
  const box = await pictureBox(page);
  near(box.width / box.height, 1780 / 820, 'ratio');
  const at = await middleOf(page, 8);
  await page.mouse.click(at.x, at.y);
  assert.equal(
    await selectedLabel(page),
    'far away',
    'what is drawn over the elements lets clicks through',
  );
  assert.equal(await page.locator('#position').innerText(), '1400, 650');
  const frame = await page.locator('#selected-frame').boundingBox();
  near(frame.x, box.x + (1300 * box.width) / 1780, 'left of the frame');
  near(frame.y, box.y + (650 * box.width) / 1780, 'top of the frame');
  await closeQuietly(page);
});

test('a picture that is no SVG is reported', async () => {
  const broken = {
    size: '1280x720',
    pass: 1,
    svg: '<svg><g></svg>',
    elements: everyKind(),
    diagnostics: [],
  };
  const page = await browser.open(model([broken]));
  assert.equal(await page.locator('#empty').innerText(), 'The picture cannot be read.');
  assert.equal(await page.getByRole('treeitem').count(), 9);
  await closeQuietly(page);
});
