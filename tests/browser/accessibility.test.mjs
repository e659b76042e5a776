// What assistive technology, the keyboard alone, other colours and narrow windows get.
import assert from 'node:assert/strict';
import {after, before, test} from 'node:test';
import {everyKind, model, picture, someDiagnostics} from './support/sample_model.mjs';
import {TestBrowser, closeQuietly, details} from './support/viewer_page.mjs';

const browser = new TestBrowser();
before(() => browser.start());
after(() => browser.stop());

const open = (options) =>
  browser.open(
    model(
      [
        picture('1280x720', 1, everyKind(), someDiagnostics),
        picture('1280x720', 2, everyKind()),
        picture('800x480', 1, everyKind()),
      ],
      {outdated: 'page.json:1:1: error'},
    ),
    options,
  );

/** The browser's own accessibility tree, as {role, name, ...properties}. */
async function accessibilityTree(page) {
  const session = await page.context().newCDPSession(page);
  const {nodes} = await session.send('Accessibility.getFullAXTree');
  return nodes
    .filter((node) => !node.ignored)
    .map((node) => ({
      role: node.role.value,
      name: node.name ? node.name.value : '',
      ...Object.fromEntries(
        (node.properties || []).map((entry) => [entry.name, entry.value.value]),
      ),
    }));
}

test('every control has a role and a name', async () => {
  const page = await open();
  const tree = await accessibilityTree(page);
  const controls = tree.filter((node) => node.focusable && node.role !== 'RootWebArea');
  assert.ok(controls.length > 15, `${controls.length} controls`);
  for (const control of controls) {
    assert.ok(control.name.trim(), `${control.role} without a name`);
    assert.ok(
      [
        'link',
        'button',
        'slider',
        'combobox',
        'tree',
        'treeitem',
        'application',
        'region',
        'option',
        'MenuListPopup',
      ].includes(control.role),
      control.role,
    );
  }
  const named = (role) => tree.filter((node) => node.role === role).map((node) => node.name);
  for (const name of [
    'Play the passes',
    'Zoom out',
    'Zoom in',
    'Fit',
    '1:1, actual size',
    'Keys',
  ]) {
    assert.ok(named('button').includes(name), name);
  }
  assert.deepEqual(named('slider'), ['Pass']);
  assert.deepEqual(named('combobox'), ['Screen']);
  assert.deepEqual(named('application'), ['Picture of page.json, 1280 by 720']);
  assert.deepEqual(
    named('region')
      .map((name) => name.toLowerCase())
      .sort(),
    ['details', 'diagnostics 1 error, 1 warning', 'elements 9'],
  );
  assert.ok(named('heading').includes('page.json preview'));
  assert.equal(named('alert').length, 1);
  await closeQuietly(page);
});

test('the elements are a tree with levels, positions and states', async () => {
  const page = await open();
  await page.getByRole('treeitem', {name: 'copy 1'}).click();
  const tree = await accessibilityTree(page);
  assert.deepEqual(
    tree.filter((node) => node.role === 'tree').map((node) => node.name),
    ['Elements'],
  );
  const items = tree.filter((node) => node.role === 'treeitem');
  assert.deepEqual(
    items.map((item) => [item.name, item.level, item.expanded, item.selected]),
    [
      ['document page.json', 1, true, false],
      ['element RenderType 1', 2, undefined, false],
      ['element RenderType 2 "Welcome"', 2, true, false],
      ['text Welcome', 3, undefined, false],
      ['If $(alarm.level) > 0 null page.json:77:9', 2, undefined, false],
      ['Loop over $(rooms)', 2, true, false],
      ['element copy 0', 3, undefined, false],
      ['element copy 1 1 warning', 3, undefined, true],
      ['element far away off screen', 2, undefined, false],
    ],
  );
  const places = await page
    .getByRole('treeitem')
    .evaluateAll((rows) => rows.map((row) => `${row.ariaPosInSet}/${row.ariaSetSize}`));
  assert.deepEqual(places, ['1/1', '1/5', '2/5', '1/1', '3/5', '4/5', '1/2', '2/2', '5/5']);
  await closeQuietly(page);
});

test('the Tab key goes through everything, in the order of the page', async () => {
  const page = await open();
  const stops = [];
  for (let i = 0; i < 14; ++i) {
    await page.keyboard.press('Tab');
    stops.push(
      await page.evaluate(() => {
        const focus = document.activeElement;
        return focus.id || focus.getAttribute('role') || focus.className;
      }),
    );
  }
  assert.deepEqual(stops.slice(0, 13), [
    'skip',
    'size',
    'play',
    'pass',
    'zoom-out',
    'zoom-in',
    'zoom-fit',
    'zoom-one',
    'help',
    'treeitem',
    'stage',
    'details',
    'finding',
  ]);
  await closeQuietly(page);
});

test('what has the focus is marked', async () => {
  const page = await open();
  for (let i = 0; i < 13; ++i) {
    await page.keyboard.press('Tab');
    const [name, outline] = await page.evaluate(() => {
      const style = getComputedStyle(document.activeElement);
      return [
        document.activeElement.outerHTML.slice(0, 60),
        `${style.outlineStyle} ${style.outlineWidth}`,
      ];
    });
    assert.equal(outline, 'solid 2px', name);
  }
  await closeQuietly(page);
});

test('the skip link leads into the elements', async () => {
  const page = await open();
  await page.keyboard.press('Tab');
  await page.waitForFunction(
    () => document.querySelector('.skip').getBoundingClientRect().top >= 0,
  );
  await page.keyboard.press('Enter');
  assert.equal(await page.evaluate(() => document.activeElement.getAttribute('role')), 'treeitem');
  await page.keyboard.press('ArrowDown');
  assert.match(await details(page), /RenderType 1/);
  await closeQuietly(page);
});

test('? shows the keys, Escape and the button close them', async () => {
  const page = await open();
  const dialog = page.getByRole('dialog', {name: 'Keys'});
  for (const close of [
    () => page.keyboard.press('Escape'),
    () => dialog.getByRole('button', {name: 'Close'}).click(),
  ]) {
    await page.keyboard.press('?');
    assert.ok(await dialog.isVisible());
    await close();
    assert.ok(await dialog.isHidden());
  }
  await page.getByRole('button', {name: 'Keys'}).click();
  assert.ok(await dialog.isVisible());
  await page.keyboard.press('n');
  assert.equal(
    await page.locator('[aria-selected=true]').count(),
    0,
    'no key acts behind the dialog',
  );
  await closeQuietly(page);
});

test('letters do nothing outside of picture and tree', async () => {
  const page = await open();
  await page.locator('#details').focus();
  const level = await page.locator('#zoom-level').innerText();
  for (const key of ['+', 'n', '.', 'p', '1']) await page.keyboard.press(key);
  assert.equal(await page.locator('#zoom-level').innerText(), level);
  assert.equal(await page.locator('#pass-text').innerText(), 'Pass 1 of 2');
  assert.equal(await page.locator('[aria-selected=true]').count(), 0);
  await closeQuietly(page);
});

/** For each text of the page: its contrast to what is behind it. Runs in the page. */
function contrasts() {
  const parse = (text) => {
    const [red, green, blue, alpha = 1] = text.match(/[\d.]+/g).map(Number);
    return {rgb: [red, green, blue], alpha};
  };
  const luminance = (rgb) => {
    const [red, green, blue] = rgb
      .map((part) => part / 255)
      .map((part) => (part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4));
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
  };
  const behind = (element) => {
    const {rgb, alpha} = parse(getComputedStyle(element).backgroundColor);
    if (alpha === 1 || !element.parentElement) return rgb;
    const below = behind(element.parentElement);
    return rgb.map((part, index) => part * alpha + below[index] * (1 - alpha));
  };
  const isShown = (element) =>
    element.checkVisibility() && !element.closest('.unseen, .skip, option');
  return [...document.body.querySelectorAll('*')]
    .filter(
      (element) =>
        isShown(element) &&
        [...element.childNodes].some(
          (node) => node.nodeType === Node.TEXT_NODE && node.data.trim(),
        ),
    )
    .map((element) => {
      const [a, b] = [
        luminance(parse(getComputedStyle(element).color).rgb),
        luminance(behind(element)),
      ];
      return {
        text: element.textContent.trim().slice(0, 40),
        contrast: (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05),
      };
    });
}

for (const colorScheme of ['light', 'dark']) {
  test(`texts are readable in ${colorScheme}`, async () => {
    const page = await open({colorScheme});
    const background = await page.evaluate(() => getComputedStyle(document.body).backgroundColor);
    const isDark = Number(background.match(/\d+/)[0]) < 128;
    assert.equal(isDark, colorScheme === 'dark');
    let texts = 0;
    const check = async () => {
      for (const {text, contrast} of await page.evaluate(contrasts)) {
        texts += 1;
        assert.ok(contrast >= 4.5, `${contrast.toFixed(2)} for "${text}"`);
      }
    };
    await page.getByRole('treeitem', {name: 'RenderType 2'}).click();
    await check();
    await page.getByRole('treeitem', {name: 'If '}).click();
    await page.getByRole('treeitem', {name: 'RenderType 1'}).hover();
    await check();
    await page.locator('#diagnostics button').click();
    await page.mouse.move(640, 300);
    await check();
    await page.keyboard.press('?');
    await check();
    assert.ok(texts > 200, `${texts} texts`);
    await closeQuietly(page);
  });
}

test('nothing moves by itself for those who want less motion', async () => {
  const moving = async (reducedMotion) => {
    const page = await open({reducedMotion});
    const count = await page.evaluate(
      () =>
        [...document.querySelectorAll('*')].filter((element) => {
          const style = getComputedStyle(element);
          return style.transitionDuration !== '0s' || style.animationName !== 'none';
        }).length,
    );
    await closeQuietly(page);
    return count;
  };
  assert.ok((await moving('no-preference')) > 0);
  assert.equal(await moving('reduce'), 0);
});

test('from 900 pixels on the panes are side by side, and nothing sticks out', async () => {
  for (const width of [900, 1280, 2560]) {
    const page = await open({viewport: {width, height: 700}});
    const boxes = [];
    for (const part of ['.elements', '#stage', '.inspector'])
      boxes.push(await page.locator(part).boundingBox());
    assert.ok(
      boxes[0].x + boxes[0].width <= boxes[1].x + 1 &&
        boxes[1].x + boxes[1].width <= boxes[2].x + 1,
    );
    assert.ok(boxes[1].width > 300, `${boxes[1].width}`);
    const [scroll, client] = await page.evaluate(() => [
      document.documentElement.scrollWidth,
      document.documentElement.clientWidth,
    ]);
    assert.equal(scroll, client);
    assert.ok(
      Math.abs(boxes[2].y + boxes[2].height - 700) < 1,
      'the panes reach to the lower edge',
    );
    await closeQuietly(page);
  }
});

test('in a narrow window the panes lie below each other, and all can be used', async () => {
  const page = await open({viewport: {width: 420, height: 800}});
  const scrolls = await page.evaluate(() => document.documentElement.scrollWidth);
  assert.equal(scrolls, 420);
  const [stage, tree, details_] = [
    await page.locator('#stage').boundingBox(),
    await page.locator('#tree').boundingBox(),
    await page.locator('#details').boundingBox(),
  ];
  assert.ok(stage.y < tree.y && tree.y < details_.y && stage.height > 200);
  await page.getByRole('treeitem', {name: 'copy 1'}).click();
  assert.match(await details(page), /copy 1/);
  await closeQuietly(page);
});

test('the page forbids itself everything but its own script and its own server', async () => {
  const page = await open();
  const policy = await page
    .locator('meta[http-equiv=Content-Security-Policy]')
    .getAttribute('content');
  assert.deepEqual(policy.split('; '), [
    "default-src 'none'",
    "script-src 'nonce-viewer'",
    "style-src 'unsafe-inline'",
    'img-src data:',
    'font-src data:',
    "connect-src 'self'",
    "base-uri 'none'",
    "form-action 'none'",
  ]);
  const refused = await page.evaluate(async () => {
    const failures = [];
    await fetch('http://127.0.0.1:9/').catch(() => failures.push('fetch'));
    window.ran = false;
    const script = document.createElement('script');
    script.textContent = 'window.ran = true';
    document.body.append(script);
    if (!window.ran) failures.push('script');
    return failures;
  });
  assert.deepEqual(refused, ['fetch', 'script']);
  assert.deepEqual(
    page.complaints.filter((line) => !/Content Security Policy/.test(line)),
    [],
  );
  await page.context().close();
});
