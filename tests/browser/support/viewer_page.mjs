// Opens pages of the viewer in a browser, and watches what they do.
import assert from 'node:assert/strict';
import {spawnSync} from 'node:child_process';
import {mkdtempSync, readFileSync, rmSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {dirname, join, resolve} from 'node:path';
import {fileURLToPath, pathToFileURL} from 'node:url';
import {chromium} from 'playwright-core';
import {shared} from './sample_model.mjs';

export const root = resolve(dirname(fileURLToPath(import.meta.url)), '../../..');
const ttr = resolve(root, process.env.TTR || 'build/dev/tool/ttr');

/** The page that `ttr preview` writes, as it is run in a directory. */
function preview(directory, previewArguments, output) {
  rmSync(output, {force: true});
  const run = spawnSync(ttr, ['preview', ...previewArguments, '-o', output], {
    cwd: directory,
    encoding: 'utf8',
  });
  assert.ok(run.status === 0 || run.status === 1, `${ttr}: ${run.error || run.stderr}`);
  return readFileSync(output, 'utf8');
}

/** What stands before and after the data in a page of the viewer. */
function readAroundModel() {
  const directory = mkdtempSync(join(tmpdir(), 'viewer-'));
  writeFileSync(join(directory, 'page.json'), '{}');
  const page = preview(directory, ['page.json'], join(directory, 'preview.html'));
  rmSync(directory, {recursive: true});
  const parts = page.split(/(?<=<script type="application\/json" id="model">).*(?=<\/script>)/);
  assert.equal(parts.length, 2, 'the viewer has one place for its data');
  return parts;
}

let aroundModel = null;

/** The viewer around a model, as the tool writes it. */
export function viewerWith(model) {
  aroundModel ??= readAroundModel();
  return aroundModel.join(JSON.stringify(shared(model)).replace(/</g, '\\u003c'));
}

/** The browser of one test file, with the files that its pages are read from. */
export class TestBrowser {
  async start() {
    this.directory = mkdtempSync(join(tmpdir(), 'viewer-'));
    this.browser = await chromium.launch({
      executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
      args: ['--no-sandbox', '--force-color-profile=srgb', '--font-render-hinting=none'],
    });
  }

  async stop() {
    if (this.browser) await this.browser.close();
    if (this.directory) rmSync(this.directory, {recursive: true});
  }

  /** A page of the viewer that shows `model`. */
  open(model, options) {
    return this.openText(viewerWith(model), options);
  }

  /** The page that `ttr preview` writes for a page of the examples. */
  openExample(name, previewOptions, options) {
    const directory = join(root, 'examples', name);
    return this.openPreview(
      directory,
      ['template.json', '--values', 'values.json', ...previewOptions],
      options,
    );
  }

  /** The page that `ttr preview` writes for a page of its own. */
  openTemplate(template, values, options, previewOptions = []) {
    const directory = mkdtempSync(join(this.directory, 'template-'));
    writeFileSync(join(directory, 'page.json'), template);
    writeFileSync(join(directory, 'values.json'), JSON.stringify(values));
    return this.openPreview(directory, ['page.json', '--values', 'values.json', ...previewOptions], options);
  }

  openPreview(directory, previewArguments, options) {
    const output = join(this.directory, 'preview.html');
    return this.openText(preview(directory, previewArguments, output), options);
  }

  openText(html, options) {
    const file = join(this.directory, `page-${Math.random().toString(36).slice(2)}.html`);
    writeFileSync(file, html);
    return this.openUrl(pathToFileURL(file).href, options);
  }

  /** @param {object} options of the browser's context: viewport, colorScheme, ... */
  async openUrl(url, options = {}) {
    const context = await this.browser.newContext({
      viewport: {width: 1280, height: 800},
      ...options,
    });
    const page = await context.newPage();
    page.setDefaultTimeout(15000);
    page.complaints = [];
    page.requests = [];
    page.on('console', (message) => page.complaints.push(`${message.type()}: ${message.text()}`));
    page.on('pageerror', (error) => page.complaints.push(String(error)));
    page.on('request', (request) => page.requests.push(request.url()));
    await page.goto(url);
    return page;
  }
}

/** Closes a page, after making sure that it was content and asked for nothing but itself. */
export async function closeQuietly(page) {
  const [own] = page.url().split('#');
  const foreign = page.requests.filter((url) => url !== own && !url.startsWith('data:'));
  assert.deepEqual(page.complaints, []);
  assert.deepEqual(foreign, []);
  assert.ok(page.requests.length > 0, 'requests are seen at all');
  await page.context().close();
}

/** The text of the details, one line for each entry. */
export const details = (page) => page.locator('#details').innerText();

/** The label of the selected row, '' without one. */
export async function selectedLabel(page) {
  const row = page.locator('[role=treeitem][aria-selected=true]');
  assert.ok((await row.count()) <= 1, 'one row at most is selected');
  return (await row.count()) ? row.locator('.label').textContent() : '';
}

/** The middle of an element's drawing, in the window. */
export async function middleOf(page, id) {
  const box = await page.locator(`#picture [data-id="${id}"] > rect`).first().boundingBox();
  return {x: box.x + box.width / 2, y: box.y + box.height / 2};
}

/** Where the picture lies in the window, and how large it is. */
export const pictureBox = (page) => page.locator('#picture').boundingBox();
