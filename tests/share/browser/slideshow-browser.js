// node slideshow-browser.js QUORBEL_BATCH SAMPLES [--screenshot FILE]
// Makes a "Web" job of three sample photos with captions (awkward names and a caption that
// tries to inject markup), opens the page in headless Chromium and steps through it.
'use strict';
const assert = require('node:assert/strict');
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');

const SKIP = 77;
const [batch, samples] = process.argv.slice(2, 4);
const shotAt = process.argv.indexOf('--screenshot');
const screenshot = shotAt > 0 ? process.argv[shotAt + 1] : null;
const chromium = process.env.QUORBEL_CHROMIUM || '/usr/bin/chromium';

let playwright;
try {
  playwright = require(path.join(__dirname, 'node_modules', 'playwright-core'));
} catch {
  console.log('SKIP: playwright-core is not installed (scripts/deps installs it)');
  process.exit(SKIP);
}
if (!fs.existsSync(chromium)) {
  console.log(`SKIP: no Chromium at ${chromium}`);
  process.exit(SKIP);
}

const pictures = [
  { from: 'Bridge_by_Sander_Klootwijk.jpg', name: 'bridge.jpg', caption: 'The old bridge at dusk' },
  { from: 'Dragonfly_by_Bolly.jpg', name: 'dragon fly #2 & co.jpg', caption: '</option><script>window.injected = 1</script>' },
  { from: 'aitzgorri_by_Aitzol_Berasategi.jpg', name: 'Aitzgorri – «cima».jpg', caption: 'Aitzgorri, Euskal Herria — “zero”' },
];

async function main() {
  const work = fs.mkdtempSync(path.join(os.tmpdir(), 'quorbel-slideshow-'));
  try {
    const source = path.join(work, 'source');
    const target = path.join(work, 'web');
    fs.mkdirSync(source);
    const rows = [];
    pictures.forEach((p, i) => {
      fs.copyFileSync(path.join(samples, p.from), path.join(source, p.name));
      rows.push(`Picture${i + 1}=${p.name}`, `Caption${i + 1}=${p.caption}`);
    });
    const job = path.join(work, 'web.ini');
    fs.writeFileSync(job, ['[Job]', 'Type=Web', 'Source=source', 'Target=web', 'Preset=Custom', 'Width=800',
      'Height=600', 'Unit=Pixels', 'OutputType=JPEG (*.jpg)', 'Overwrite=YesToAll', '[Pictures]', ...rows, ''].join('\n'));
    execFileSync(batch, [job], { stdio: 'inherit' });

    // The profile folder is Chromium's --user-data-dir.
    const browser = await playwright.chromium.launchPersistentContext(path.join(work, 'profile'), {
      executablePath: chromium,
      headless: true,
      viewport: { width: 1200, height: 800 },
      args: ['--no-sandbox', '--disable-gpu', '--no-first-run', '--disable-background-networking',
        '--disable-component-update', '--disable-sync'],
    });
    try {
      const page = await browser.newPage();
      const errors = [];
      page.on('pageerror', (e) => errors.push(e.message));
      await page.goto('file://' + path.join(target, 'slideshow.htm'));

      // What is on screen: the picture's file (decoded), its caption and the list's choice.
      const shown = () => page.evaluate(async () => {
        const img = document.getElementById('picture');
        await img.decode().catch(() => {});
        return { file: decodeURIComponent(img.src.split('/').pop()), width: img.naturalWidth,
          caption: document.getElementById('caption').textContent,
          selected: document.getElementById('pictures').selectedIndex };
      });
      const expectShown = async (i) => {
        const s = await shown();
        assert.equal(s.file, pictures[i].name);
        assert.ok(s.width > 0, `${pictures[i].name} did not load`);
        assert.equal(s.caption, pictures[i].caption);
        assert.equal(s.selected, i);
      };

      await expectShown(0);
      await page.click('#next');
      await expectShown(1);
      await page.keyboard.press('ArrowRight');
      await expectShown(2);
      await page.click('#previous');
      await expectShown(1);
      assert.equal(await page.evaluate(() => window.injected), undefined);

      const names = await page.$$eval('#pictures option', (os) => os.map((o) => o.value));
      assert.deepEqual(names, pictures.map((p) => p.name));
      for (const n of names) assert.ok(fs.existsSync(path.join(target, n)), `${n} is named but missing`);
      assert.deepEqual(errors, []);

      if (screenshot) {
        await page.click('#previous');
        await expectShown(0);
        await page.mouse.move(600, 300);
        await page.screenshot({ path: screenshot });
      }
    } finally {
      await browser.close();
    }
    console.log('slide show: 3 pictures stepped through in Chromium; 1 passed, 0 failed');
  } finally {
    fs.rmSync(work, { recursive: true, force: true });
  }
}

main().catch((e) => {
  console.error(e);
  process.exit(1);
});
