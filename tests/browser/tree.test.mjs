// The tree of elements: keys, opening and closing, and its step with the picture.
import assert from 'node:assert/strict';
import {after, before, test} from 'node:test';
import {
  element,
  everyKind,
  manyElements,
  model,
  picture,
  someDiagnostics,
} from './support/sample_model.mjs';
import {
  TestBrowser,
  closeQuietly,
  details,
  middleOf,
  selectedLabel,
} from './support/viewer_page.mjs';

const browser = new TestBrowser();
before(() => browser.start());
after(() => browser.stop());

const open = (elements = everyKind()) =>
  browser.open(model([picture('1280x720', 1, elements, someDiagnostics)]));
// Text content: a row that is not drawn yet has no inner text, as its contents are skipped.
const visibleLabels = (page) => page.locator('.row:not([hidden]) .label').allTextContents();
const focusedLabel = (page) =>
  page.evaluate(() => {
    const label = document.activeElement.querySelector('.label');
    return label ? label.textContent : '';
  });

test('all elements are there, in order, open, none selected', async () => {
  const page = await open();
  assert.deepEqual(await visibleLabels(page), [
    'page.json',
    'RenderType 1',
    'RenderType 2 "Welcome"',
    'Welcome',
    'If $(alarm.level) > 0',
    'Loop over $(rooms)',
    'copy 0',
    'copy 1',
    'far away',
  ]);
  assert.equal(await selectedLabel(page), '');
  assert.equal(await page.locator('#element-count').innerText(), '9');
  await closeQuietly(page);
});

test('arrow keys, Home and End move focus and selection', async () => {
  const page = await open();
  await page.getByRole('treeitem').first().click();
  const steps = [
    ['ArrowDown', 'RenderType 1'],
    ['ArrowDown', 'RenderType 2 "Welcome"'],
    ['ArrowRight', 'Welcome'],
    ['ArrowLeft', 'RenderType 2 "Welcome"'],
    ['ArrowUp', 'RenderType 1'],
    ['ArrowLeft', 'page.json'],
    ['End', 'far away'],
    ['ArrowDown', 'far away'],
    ['Home', 'page.json'],
    ['ArrowUp', 'page.json'],
  ];
  for (const [key, label] of steps) {
    await page.keyboard.press(key);
    assert.equal(await selectedLabel(page), label, key);
    assert.equal(await focusedLabel(page), label, key);
  }
  await closeQuietly(page);
});

test('left closes an element, right opens it, and * opens all siblings', async () => {
  const page = await open();
  await page.getByRole('treeitem', {name: 'Loop over'}).click();
  await page.keyboard.press('ArrowLeft');
  assert.deepEqual((await visibleLabels(page)).slice(-2), ['Loop over $(rooms)', 'far away']);
  const loop = page.getByRole('treeitem', {name: 'Loop over'});
  assert.equal(await loop.getAttribute('aria-expanded'), 'false');
  await page.keyboard.press('ArrowDown');
  assert.equal(await selectedLabel(page), 'far away');
  await page.keyboard.press('*');
  assert.equal(await loop.getAttribute('aria-expanded'), 'true');
  await page.keyboard.press('Home');
  await page.keyboard.press('ArrowLeft');
  assert.deepEqual(await visibleLabels(page), ['page.json']);
  await page.keyboard.press('ArrowRight');
  assert.equal((await visibleLabels(page)).length, 9);
  await closeQuietly(page);
});

test('a click on the triangle opens and closes; a hidden selection moves up', async () => {
  const page = await open();
  await page.getByRole('treeitem', {name: 'copy 1'}).click();
  await page.getByRole('treeitem', {name: 'Loop over'}).locator('.twisty').click();
  assert.equal((await visibleLabels(page)).length, 7);
  assert.equal(await selectedLabel(page), 'Loop over $(rooms)');
  await page.getByRole('treeitem', {name: 'Loop over'}).locator('.twisty').click();
  assert.equal((await visibleLabels(page)).length, 9);
  await closeQuietly(page);
});

test('the Tab key reaches one row: the current one', async () => {
  const page = await open();
  const reachable = () => page.locator('.row[tabindex="0"] .label').allTextContents();
  assert.deepEqual(await reachable(), ['page.json']);
  await page.getByRole('treeitem', {name: 'copy 1'}).click();
  assert.deepEqual(await reachable(), ['copy 1']);
  await page.locator('#help').focus();
  await page.keyboard.press('Tab');
  assert.equal(await focusedLabel(page), 'copy 1');
  await closeQuietly(page);
});

test('a row that is selected frames the element, a click in the picture selects the row', async () => {
  const page = await open();
  await page.getByRole('treeitem', {name: 'copy 1'}).click();
  assert.ok(await page.locator('#selected-frame').isVisible());
  assert.match(await details(page), /copy 1/);
  const at = await middleOf(page, 2);
  await page.mouse.click(at.x, at.y);
  assert.equal(await selectedLabel(page), 'RenderType 2 "Welcome"');
  await closeQuietly(page);
});

test('pointing at a row frames the element', async () => {
  const page = await open();
  await page.getByRole('treeitem', {name: 'copy 1'}).hover();
  const frame = await page.locator('#hovered-frame').boundingBox();
  const drawn = await page.locator('#picture [data-id="7"] > rect').boundingBox();
  assert.ok(Math.abs(frame.x - drawn.x) < 1 && Math.abs(frame.width - drawn.width) < 1);
  assert.equal(await selectedLabel(page), '');
  await closeQuietly(page);
});

test('selecting in the picture opens what is closed, and scrolls the tree', async () => {
  const page = await open(manyElements(400));
  await page.getByRole('treeitem').first().click();
  await page.keyboard.press('ArrowLeft');
  assert.equal((await visibleLabels(page)).length, 1);
  const at = await middleOf(page, 399);
  await page.mouse.click(at.x, at.y);
  assert.equal(await selectedLabel(page), '399');
  const [tree, row] = [
    await page.locator('#tree').boundingBox(),
    await page.locator('[aria-selected=true]').boundingBox(),
  ];
  assert.ok(
    row.y >= tree.y && row.y + row.height <= tree.y + tree.height,
    JSON.stringify({tree, row}),
  );
  assert.ok((await page.locator('#tree').evaluate((element) => element.scrollTop)) > 0);
  await closeQuietly(page);
});

test('what became null says so, and where it stands', async () => {
  const page = await open();
  const row = page.getByRole('treeitem', {name: 'If $(alarm.level)'});
  assert.equal(await row.locator('.chip').textContent(), 'null');
  assert.equal(await row.locator('.place').textContent(), 'page.json:77:9');
  const [place, shown] = await row
    .locator('.place')
    .evaluate((element) => [element.scrollWidth, element.clientWidth]);
  assert.ok(place <= shown, 'the place is shown whole');
  await row.click();
  assert.match(await details(page), /null: nothing is shown for it/);
  assert.doesNotMatch(await details(page), /Resolved/);
  await closeQuietly(page);
});

test('what stands in something that became null is closed at first', async () => {
  const page = await open([
    element(0, null, {kind: 'If', label: 'If not', isNull: true}),
    element(1, 0, {label: 'hidden', isNull: true}),
  ]);
  assert.deepEqual(await visibleLabels(page), ['If not']);
  const row = page.getByRole('treeitem', {name: 'If not'});
  assert.equal(await row.getAttribute('aria-expanded'), 'false');
  await row.click();
  await page.keyboard.press('ArrowRight');
  assert.deepEqual(await visibleLabels(page), ['If not', 'hidden']);
  await page.keyboard.press('ArrowLeft');
  assert.deepEqual(await visibleLabels(page), ['If not']);
  await closeQuietly(page);
});

test('a document and its Include, which share a place, are two rows', async () => {
  const elements = [
    element(0, null, {kind: 'Include', label: 'Include', pointer: '/Contents/0'}),
    element(1, 0, {kind: 'document', label: 'header.json', pointer: '/Contents/0'}),
    element(2, 1, {label: 'inside', pointer: '/Contents/0/Contents/0'}),
  ];
  const page = await browser.open(
    model([picture('1280x720', 1, elements), picture('1280x720', 2, elements)]),
  );
  await page.getByRole('treeitem', {name: 'header.json'}).click();
  await page.keyboard.press('ArrowLeft');
  assert.deepEqual(await visibleLabels(page), ['Include', 'header.json']);
  await page.keyboard.press('.');
  assert.equal(await selectedLabel(page), 'header.json');
  await closeQuietly(page);
});

test('rows tell of diagnostics and of bounds off the screen', async () => {
  const page = await open();
  assert.equal(
    await page.getByRole('treeitem', {name: 'copy 1'}).locator('.chip').textContent(),
    '1 warning',
  );
  assert.equal(
    await page.getByRole('treeitem', {name: 'far away'}).locator('.chip').textContent(),
    'off screen',
  );
  assert.equal(await page.getByRole('treeitem', {name: 'copy 0'}).locator('.chip').count(), 0);
  await closeQuietly(page);
});
