// Pages of thousands of elements stay quick to use. What counts is the processor time of the page, so
// that a busy machine disturbs little; the limits are some times what was measured.
import assert from 'node:assert/strict';
import {after, before, test} from 'node:test';
import {manyElements, model, picture} from './support/sample_model.mjs';
import {TestBrowser, closeQuietly, selectedLabel} from './support/viewer_page.mjs';

const browser = new TestBrowser();
before(() => browser.start());
after(() => browser.stop());

/** Milliseconds of processor time that the page has taken so far. */
async function used(session) {
  const {metrics} = await session.send('Performance.getMetrics');
  return metrics.find((metric) => metric.name === 'TaskDuration').value * 1000;
}

/** What `action`, run in the page, takes up to the next picture on the screen. */
async function timed(page, session, action) {
  const start = await used(session);
  await page.evaluate(action);
  await page.evaluate(() => new Promise((done) => requestAnimationFrame(() => setTimeout(done))));
  return (await used(session)) - start;
}

/** Runs in the page: presses a key where the focus is. */
const press = (key, count) =>
  `for (let i = 0; i < ${count}; ++i) document.activeElement.dispatchEvent(` +
  `new KeyboardEvent('keydown', {key: '${key}', bubbles: true, cancelable: true}))`;

const pointAtRows = `for (const row of [...document.querySelectorAll('.row')].slice(0, 50))
  row.dispatchEvent(new PointerEvent('pointerover', {bubbles: true}))`;

test('3000 elements: selecting, zooming, pointing, and the next pass', async (context) => {
  const elements = manyElements(3000);
  const page = await browser.open(
    model([picture('1280x720', 1, elements), picture('1280x720', 2, elements)]),
  );
  const session = await page.context().newCDPSession(page);
  await session.send('Performance.enable', {timeDomain: 'threadTicks'});
  assert.equal(await page.getByRole('treeitem').count(), 3000);
  await page.getByRole('treeitem').first().click();
  const limits = {'each selected': 40, 'each zoom': 20, 'each pointed at': 10, 'next pass': 1500};
  const measures = {
    'each selected': (await timed(page, session, press('ArrowDown', 50))) / 50,
    'each zoom': (await timed(page, session, press('+', 50))) / 50,
    'each pointed at': (await timed(page, session, pointAtRows)) / 50,
    'next pass': await timed(page, session, press('.', 1)),
  };
  assert.equal(await selectedLabel(page), 'text 49');
  for (const [what, milliseconds] of Object.entries(measures)) {
    context.diagnostic(`${what}: ${milliseconds.toFixed(1)} ms`);
    assert.ok(milliseconds > 0 && milliseconds < limits[what], `${what}: ${milliseconds} ms`);
  }
  await closeQuietly(page);
});
