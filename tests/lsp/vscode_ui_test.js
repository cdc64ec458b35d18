// Drives VS Code (code-server, in headless Chromium through playwright-core)
// with the README's language-client extension installed, on the workspace of
// tests/lsp/workspace_files.sh plus one badly formatted file, and checks what
// a person would see: quill's diagnostic in the Problems view, Format
// Document giving `quill format`'s text, the module in the outline, and the
// .xdc file served by quill (coloured by semantic tokens, its didOpen in the
// client's trace). Screenshots of each step go to the output folder.
// Usage: node vscode_ui_test.js URL WORKSPACE QUILL OUTPUT_DIR LOGS_DIR
'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { spawnSync } = require('node:child_process');
const { chromium } = require('playwright-core');

const [url, workspace, quill, outputDir, logsDir] = process.argv.slice(2);
if (!logsDir) {
  console.error('usage: node vscode_ui_test.js URL WORKSPACE QUILL OUTPUT_DIR LOGS_DIR');
  process.exit(2);
}
const kStepTimeoutMs = 60000;
// code-server's key bindings in a Linux browser.
const modifier = 'Control';

const failures = [];
let checksRun = 0;
let page;

async function Shoot(name) {
  await page.screenshot({ path: path.join(outputDir, `${name}.png`) });
}

// Runs one check; a failure is recorded with a screenshot and the next check goes on.
async function Check(name, body) {
  const started = Date.now();
  ++checksRun;
  try {
    await body();
    console.log(`ok   ${name} (${((Date.now() - started) / 1000).toFixed(1)} s)`);
  } catch (error) {
    failures.push(name);
    console.log(`FAIL ${name}: ${error.message.split('\n')[0]}`);
    await Shoot(`failed-${name.replace(/[^a-z0-9]+/gi, '-')}`).catch(() => {});
    // Close what the failed step left open (a dialog, a quick pick) for the next check.
    await page.keyboard.press('Escape').catch(() => {});
    await page.keyboard.press('Escape').catch(() => {});
  }
}

async function WaitFor(description, predicate, timeoutMs = kStepTimeoutMs) {
  const deadline = Date.now() + timeoutMs;
  let last;
  while (Date.now() < deadline) {
    last = await predicate();
    if (last) return last;
    await page.waitForTimeout(250);
  }
  throw new Error(`timed out waiting for ${description}`);
}

async function RunCommand(title) {
  await page.keyboard.press('F1');
  const input = page.locator('.quick-input-widget .quick-input-box input');
  await input.waitFor({ state: 'visible' });
  await input.fill(`>${title}`);
  // Pick the entry whose label is exactly the title ("Format Document", not "... With...").
  const entry = page.locator('.quick-input-widget .monaco-list-row', {
    has: page.locator('.label-name', { hasText: new RegExp(`^${title.replace(/[.*+?^${}()|[\]\\]/g, '\\$&')}$`) }),
  }).first();
  await entry.waitFor({ state: 'visible', timeout: 10000 });
  await entry.click();
  await input.waitFor({ state: 'hidden' });
}

async function OpenFile(relativePath) {
  const name = path.basename(relativePath);
  await page.keyboard.press(`${modifier}+P`);
  const input = page.locator('.quick-input-widget .quick-input-box input');
  await input.waitFor({ state: 'visible' });
  await input.fill(relativePath);
  // Quick Open shows the recent files first and filters a moment later: wait
  // until the file is the focused entry, or Enter opens whatever was first.
  await page.locator('.quick-input-widget .monaco-list-row.focused', {
    has: page.locator('.label-name', { hasText: name }),
  }).waitFor({ state: 'visible', timeout: 10000 });
  await page.keyboard.press('Enter');
  await page.locator('.tabs-container .tab.active', { hasText: name })
    .waitFor({ state: 'visible', timeout: 10000 });
  await page.locator('.editor-instance .monaco-editor .view-lines').first().waitFor({ state: 'visible' });
}

// The client's trace (quill.trace.server = verbose, shown at log level trace)
// lands in the extension host's log of the "quill" output channel; each entry
// is a time-stamped header line and its JSON.
function ReadClientTrace() {
  const texts = [];
  const walk = (dir) => {
    for (const entry of fs.readdirSync(dir, { withFileTypes: true })) {
      const full = path.join(dir, entry.name);
      if (entry.isDirectory()) walk(full);
      else if (entry.name === 'quill.log') texts.push(fs.readFileSync(full, 'utf8'));
    }
  };
  if (fs.existsSync(logsDir)) walk(logsDir);
  const entries = [];
  for (const line of texts.join('\n').split('\n')) {
    const header = /^\d{4}-\d\d-\d\d [\d:.]+ \[\w+\] (.*)$/.exec(line);
    if (header) entries.push({ header: header[1], body: '' });
    else if (entries.length > 0) entries[entries.length - 1].body += `${line}\n`;
  }
  return entries;
}

// Whether the client sent didOpen for the file, and whether the server
// answered a semantic tokens request for it with tokens.
function ServerColouredFile(name) {
  const entries = ReadClientTrace();
  const aboutFile = (e) => e.body.includes(`/${name}"`);
  const opened = entries.some((e) => e.header === "Sending notification 'textDocument/didOpen'." && aboutFile(e));
  const requests = entries.filter((e) => /^Sending request 'textDocument\/semanticTokens\/full - \(\d+\)'/.test(e.header) &&
                                         aboutFile(e))
    .map((e) => /\((\d+)\)/.exec(e.header)[1]);
  const answered = entries.some((e) => {
    const response = /^Received response 'textDocument\/semanticTokens\/full - \((\d+)\)'/.exec(e.header);
    return response && requests.includes(response[1]) && /"data": \[\s*\d/.test(e.body);
  });
  return { opened, answered };
}

async function main() {
  fs.mkdirSync(outputDir, { recursive: true });
  const profile = fs.mkdtempSync(path.join(outputDir, 'chromium-profile-'));
  const browser = await chromium.launchPersistentContext(profile, {
    executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    args: ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
           '--disable-background-networking', '--disable-component-update', '--disable-sync'],
    viewport: { width: 1400, height: 900 },
  });
  try {
    page = browser.pages()[0] || await browser.newPage();
    page.setDefaultTimeout(kStepTimeoutMs);
    page.on('pageerror', (error) => console.log(`page error: ${error.message}`));
    await page.goto(`${url}/?folder=${encodeURIComponent(workspace)}`);
    try {
      await page.locator('.monaco-workbench').waitFor({ state: 'visible' });
      await page.locator('.explorer-folders-view .monaco-list-row', { hasText: 'top.v' })
        .waitFor({ state: 'visible' });
    } catch (error) {
      await Shoot('failed-workbench').catch(() => {});
      throw error;
    }
    await Shoot('1-workbench');

    await Check('top.v opens', async () => {
      await OpenFile('top.v');
    });

    await Check('diagnostic in the Problems view', async () => {
      await OpenFile('rtl/counter.v');
      await page.keyboard.press(`${modifier}+Shift+M`);
      const panel = page.locator('.markers-panel');
      await panel.waitFor({ state: 'visible' });
      await WaitFor('a blocking-assign problem from quill', async () => {
        const text = await panel.innerText();
        return text.includes('blocking-assign') && text.includes('quill');
      });
      await Shoot('2-problems');
    });

    await Check('Format Document gives quill format\'s text', async () => {
      const file = path.join(workspace, 'messy.v');
      const expected = spawnSync(quill, ['format', file], { encoding: 'utf8' }).stdout;
      const before = fs.readFileSync(file, 'utf8');
      if (!expected || expected === before) throw new Error('messy.v is not a formatting case');
      await OpenFile('messy.v');
      await RunCommand('Format Document');
      await WaitFor('the editor to show the formatted text', async () => {
        const tab = await page.locator('.tabs-container .tab.active').getAttribute('class');
        return tab.includes('dirty');
      });
      await page.keyboard.press(`${modifier}+S`);
      await WaitFor('messy.v saved formatted', async () => fs.readFileSync(file, 'utf8') === expected, 15000)
        .catch(() => {
          throw new Error(`messy.v after Format Document and save:\n${fs.readFileSync(file, 'utf8')}` +
                          `\nexpected:\n${expected}`);
        });
      await Shoot('3-formatted');
    });

    await Check('outline shows the module', async () => {
      await OpenFile('top.v');
      await RunCommand('Explorer: Focus on Outline View');
      const outline = page.locator('.outline-pane');
      await outline.waitFor({ state: 'visible' });
      let names = [];
      await WaitFor('module top, its port clk and instance u_count in the outline', async () => {
        names = await outline.locator('.monaco-list-row .label-name').allInnerTexts();
        return ['top', 'clk', 'u_count'].every((n) => names.includes(n));
      }).catch((error) => { throw new Error(`${error.message}; outline: ${JSON.stringify(names)}`); });
      await Shoot('4-outline');
    });

    await Check('pins.xdc is served by quill', async () => {
      await OpenFile('pins.xdc');
      const line = page.locator('.editor-instance .monaco-editor .view-line').first();
      await WaitFor('semantic colours on the constraint line', async () => {
        const classes = await line.locator('span > span').evaluateAll(
          (spans) => spans.map((s) => s.className));
        return new Set(classes).size >= 3;
      });
      await WaitFor('the didOpen of pins.xdc in the client trace', async () =>
        ServerColouredFile('pins.xdc').opened, 15000);
      await WaitFor('semantic tokens from quill for pins.xdc in the client trace', async () =>
        ServerColouredFile('pins.xdc').answered, 15000);
      await Shoot('5-xdc');
    });
  } finally {
    await browser.close();
    fs.rmSync(profile, { recursive: true, force: true });
  }
  if (failures.length > 0) {
    console.log(`${failures.length} of ${checksRun} checks failed: ${failures.join('; ')}`);
    process.exit(1);
  }
  console.log(`${checksRun} passed, 0 failed`);
}

main().catch((error) => {
  console.error(`vscode_ui_test: ${error.stack || error}`);
  process.exit(1);
});
