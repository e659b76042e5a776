// A page that is served, and reloads itself.
import assert from 'node:assert/strict';
import {createServer} from 'node:http';
import {after, before, test} from 'node:test';
import {element, model, picture} from './support/sample_model.mjs';
import {
  TestBrowser,
  closeQuietly,
  details,
  pictureBox,
  selectedLabel,
  viewerWith,
} from './support/viewer_page.mjs';

const browser = new TestBrowser();
before(() => browser.start());
after(() => browser.stop());

/** Serves a model, and tells the pages that are open of a new one. */
class Server {
  constructor() {
    this.streams = new Set();
    this.pages = 0;
    this.opened = 0;
  }

  async start(served, port = 0) {
    this.model = served;
    this.http = createServer((request, response) => this.answer(request, response));
    await new Promise((done) => this.http.listen(port, '127.0.0.1', done));
    this.port = this.http.address().port;
    this.url = `http://127.0.0.1:${this.port}/`;
  }

  answer(request, response) {
    if (request.url === '/events') {
      response.writeHead(200, {'Content-Type': 'text/event-stream'});
      response.write('retry: 100\n:\n\n');
      this.streams.add(response);
      this.opened += 1;
      return;
    }
    this.pages += 1;
    response.writeHead(200, {'Content-Type': 'text/html; charset=utf-8'});
    response.end(viewerWith(this.model));
  }

  /** Waits for the stream of the page that is open: what came before it would be missed. */
  async publish(served) {
    this.model = served;
    while (this.opened < this.pages) await new Promise((done) => setTimeout(done, 20));
    for (const stream of this.streams) stream.write('event: reload\ndata: 1\n\n');
  }

  async stop() {
    if (!this.http.listening) return;
    for (const stream of this.streams) stream.end();
    this.streams.clear();
    this.http.closeAllConnections();
    await new Promise((done) => this.http.close(done));
  }
}

const pictures = (word) =>
  ['1280x720', '800x480'].flatMap((size) =>
    [1, 2, 3].map((pass) =>
      picture(size, pass, [
        element(0, null, {kind: 'document', label: 'page.json', pointer: ''}),
        element(1, 0, {kind: 'Loop', label: 'Loop', pointer: '/Page/Contents/0'}),
        element(2, 1, {label: 'inside', pointer: '/Page/Contents/0/Contents/0'}),
        element(3, 0, {
          label: `${word} ${size} ${pass}`,
          bounds: [10, 10, 300, 100],
          pointer: '/Page/Contents/1',
        }),
      ]),
    ),
  );
const served = (word, overrides = {}) => model(pictures(word), {live: true, ...overrides});

test('a new page is shown with the same selection, zoom, size, pass and closed elements', async (context) => {
  const server = new Server();
  context.after(() => server.stop());
  await server.start(served('old'));
  const page = await browser.openUrl(server.url);
  await page.getByRole('combobox').selectOption('800x480');
  await page.getByRole('slider').fill('2');
  await page.getByRole('treeitem', {name: 'Loop'}).locator('.twisty').click();
  await page.getByRole('treeitem', {name: 'old 800x480 2'}).click();
  await page.keyboard.press('1');
  await page.keyboard.press('+');
  const before = await pictureBox(page);
  await server.publish(served('new'));
  await page.getByRole('treeitem', {name: 'new 800x480 2'}).waitFor();
  assert.equal(await selectedLabel(page), 'new 800x480 2');
  assert.match(await details(page), /new 800x480 2/);
  assert.deepEqual(await pictureBox(page), before);
  assert.equal(await page.locator('#pass-text').innerText(), 'Pass 2 of 3');
  assert.equal(await page.locator('.row:not([hidden])').count(), 3);
  assert.ok(
    await page
      .locator('.row')
      .last()
      .evaluate((row) => row === document.activeElement),
    'focus stays',
  );
  assert.equal(server.pages, 2);
  assert.deepEqual(page.complaints, []);
  await page.context().close();
});

test('an outdated page is shown as outdated, and no longer once it is mended', async (context) => {
  const server = new Server();
  context.after(() => server.stop());
  await server.start(served('good'));
  const page = await browser.openUrl(server.url);
  await server.publish(served('good', {outdated: 'page.json:3:1: error'}));
  await page.getByRole('alert').filter({hasText: 'OUTDATED: page.json:3:1: error'}).waitFor();
  await server.publish(served('mended'));
  await page.getByRole('treeitem', {name: 'mended'}).waitFor();
  assert.ok(await page.locator('#outdated').isHidden());
  await page.context().close();
});

test('a lost connection is told, and the page is new when the server is back', async (context) => {
  const server = new Server();
  context.after(() => server.stop());
  await server.start(served('old'));
  const page = await browser.openUrl(server.url);
  assert.ok(await page.locator('#connection').isHidden());
  const port = server.port;
  await server.stop();
  await page
    .getByRole('status')
    .filter({hasText: 'Connection to ttr lost, reconnecting'})
    .waitFor();
  await server.start(served('after'), port);
  await page.getByRole('treeitem', {name: 'after 1280x720 1'}).waitFor();
  assert.ok(await page.locator('#connection').isHidden());
  await page.context().close();
});

test('a server that refuses the stream is asked again', async (context) => {
  const server = new Server();
  context.after(() => server.stop());
  let refusals = 0;
  const answer = server.answer.bind(server);
  server.answer = (request, response) => {
    if (request.url !== '/events' || refusals === 1) return answer(request, response);
    refusals += 1;
    response.writeHead(503);
    return response.end();
  };
  await server.start(served('old'));
  const page = await browser.openUrl(server.url);
  await page.getByRole('status').filter({hasText: 'Connection to ttr lost'}).waitFor();
  await page.waitForEvent('load');
  assert.equal(refusals, 1);
  assert.equal(server.streams.size > 0, true);
  await page.context().close();
});

test('a page that is a file asks for no events', async () => {
  const page = await browser.open(model(pictures('file')));
  await page.waitForTimeout(300);
  await closeQuietly(page);
});
