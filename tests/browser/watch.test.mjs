// An author edits a page in vim, and the browser beside it follows.
import assert from 'node:assert/strict';
import {spawn, spawnSync} from 'node:child_process';
import {once} from 'node:events';
import {mkdtempSync, readFileSync, rmSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {join, resolve} from 'node:path';
import {createInterface} from 'node:readline';
import {after, before, test} from 'node:test';
import {TestBrowser, root} from './support/viewer_page.mjs';

const ttr = resolve(root, process.env.TTR || 'build/dev/tool/ttr');
const patience = {timeout: 60000};
const browser = new TestBrowser();
before(() => browser.start());
after(() => browser.stop());

/** `ttr preview --serve` on a page of its own. */
class Preview {
  async start(text) {
    this.directory = mkdtempSync(join(tmpdir(), 'watch-'));
    this.file = join(this.directory, 'page.json');
    writeFileSync(this.file, `{"Contents":["${text}"]}\n`);
    this.process = spawn(ttr, ['preview', 'page.json', '--serve', '-q'], {
      cwd: this.directory,
      stdio: ['ignore', 'pipe', 'inherit'],
    });
    [this.url] = await once(createInterface({input: this.process.stdout}), 'line');
  }

  /** One session of vim: the commands, then save and leave. */
  vim(...commands) {
    const given = [...commands, 'wq'].flatMap((command) => ['-c', command]);
    const vim = spawnSync('vim', ['-Nu', 'NONE', '-i', 'NONE', '-es', ...given, this.file], {
      timeout: 60000,
    });
    assert.equal(vim.status, 0);
    return readFileSync(this.file, 'utf8');
  }

  async stop() {
    const ended = once(this.process, 'exit');
    this.process.kill('SIGINT');
    const [code] = await ended;
    rmSync(this.directory, {recursive: true});
    return code;
  }
}

test('edits in vim and sees ten reloads', async () => {
  const preview = new Preview();
  await preview.start('text 0');
  const page = await browser.openUrl(preview.url);
  await page.getByRole('treeitem', {name: 'text 0'}).waitFor(patience);
  let loads = 0;
  page.on('load', () => {
    loads += 1;
  });
  for (let edit = 1; edit <= 10; edit += 1) {
    const seen = loads;
    assert.match(preview.vim(`%s/text [0-9]*/text ${edit}/`), new RegExp(`"text ${edit}"`));
    await page.getByRole('treeitem', {name: new RegExp(`text ${edit}\\b`)}).waitFor(patience);
    assert.equal(
      await page.getByRole('treeitem', {name: new RegExp(`text ${edit - 1}\\b`)}).count(),
      0,
    );
    while (loads === seen) await page.waitForEvent('load', patience);
  }
  assert.ok(loads >= 10, `${loads} reloads`);
  assert.deepEqual(page.complaints, []);
  await page.context().close();
  assert.equal(await preview.stop(), 0);
});

test('a faulty save leaves the last good page, as outdated, until it is mended', async () => {
  const preview = new Preview();
  await preview.start('good');
  const page = await browser.openUrl(preview.url);
  await page.getByRole('treeitem', {name: 'good'}).waitFor(patience);
  preview.vim('%s/]//');
  await page.getByRole('alert').filter({hasText: 'OUTDATED: page.json:1:'}).waitFor(patience);
  await page.getByRole('treeitem', {name: 'good'}).waitFor(patience);
  preview.vim('%s/}/]}/', '%s/good/mended/');
  await page.getByRole('treeitem', {name: 'mended'}).waitFor(patience);
  assert.ok(await page.locator('#outdated').isHidden());
  await page.context().close();
  assert.equal(await preview.stop(), 0);
});

test('the browser comes back to a server that was started anew on the same port', async () => {
  const preview = new Preview();
  await preview.start('before');
  const page = await browser.openUrl(preview.url);
  await page.getByRole('treeitem', {name: 'before'}).waitFor(patience);
  const port = new URL(preview.url).port;
  const ended = once(preview.process, 'exit');
  preview.process.kill('SIGTERM');
  assert.deepEqual(await ended, [0, null]);
  await page.getByRole('status').filter({hasText: 'Connection to ttr lost'}).waitFor(patience);
  preview.vim('%s/before/after/');
  preview.process = spawn(ttr, ['preview', 'page.json', '--serve', '-q', '--port', port], {
    cwd: preview.directory,
    stdio: ['ignore', 'pipe', 'inherit'],
  });
  await page.getByRole('treeitem', {name: 'after'}).waitFor(patience);
  await page.context().close();
  assert.equal(await preview.stop(), 0);
});
