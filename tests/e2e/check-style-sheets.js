// Hands generated style sheets to their real consumers: SCSS to sass, LESS to less,
// and every resulting CSS file to headless Chromium, which must compute the expected
// values under light, dark and the two high-contrast preferences.
//
//   node check-style-sheets.js <checks.json>
//
// checks.json: { "sheets": [ { "file": "...", "language": "css" | "scss" | "less",
//   "checks": [ { "property": "--name", "css": "color" | "box-shadow" | ...,
//                 "expect": { "light": E, "dark": E, "lightHighContrast": E, "darkHighContrast": E } } ] } ] }
// where E is { "space": "srgb" | "display-p3", "rgb": [r, g, b], "alpha": a } for colours, or
// { "contains": "text" } for any other computed value, or { "string": "text" } for a
// custom property ("css": "custom") read from the root, whose value is either the text
// itself or a CSS string holding it.
//
// Exit status: 0 all checks hold, 1 a check failed, 77 a consumer is missing.
'use strict';

const fs = require('fs');
const path = require('path');

const SKIP = 77;

function requireOrSkip(name) {
  try {
    return require(name);
  } catch (error) {
    console.log(`skipped: ${name} is not installed (run npm install in tests/e2e)`);
    process.exit(SKIP);
  }
}

const sass = requireOrSkip('sass');
const less = requireOrSkip('less');
const { chromium } = requireOrSkip('playwright-core');

const chromiumPath = '/usr/bin/chromium';
const modes = {
  light: { colorScheme: 'light', contrast: 'no-preference' },
  dark: { colorScheme: 'dark', contrast: 'no-preference' },
  lightHighContrast: { colorScheme: 'light', contrast: 'more' },
  darkHighContrast: { colorScheme: 'dark', contrast: 'more' },
};

async function compile(sheet) {
  const source = fs.readFileSync(sheet.file, 'utf8');
  if (sheet.language === 'scss') {
    return sass.compileString(source, { syntax: 'scss', style: 'expanded' }).css;
  }
  if (sheet.language === 'less') {
    return (await less.render(source, { filename: sheet.file })).css;
  }
  return source;
}

// A computed colour as { space, rgb, alpha }: rgb()/rgba() and color(srgb ...) are sRGB.
function parseColour(text) {
  let match = /^rgba?\(([^)]*)\)$/.exec(text);
  if (match) {
    const parts = match[1].split(/[\s,/]+/).filter(Boolean).map(Number);
    return { space: 'srgb', rgb: parts.slice(0, 3).map((v) => v / 255), alpha: parts.length > 3 ? parts[3] : 1 };
  }
  match = /^color\((srgb|display-p3) ([^)]*)\)$/.exec(text);
  if (match) {
    const parts = match[2].split(/[\s/]+/).filter(Boolean).map(Number);
    return { space: match[1], rgb: parts.slice(0, 3), alpha: parts.length > 3 ? parts[3] : 1 };
  }
  return null;
}

// Within half a step of an 8-bit channel, the precision of hex and rgb() output.
function sameColour(actual, expected) {
  const tolerance = 0.5 / 255 + 1e-4;
  return actual && actual.space === expected.space &&
    actual.rgb.every((v, i) => Math.abs(v - expected.rgb[i]) <= tolerance) &&
    Math.abs(actual.alpha - expected.alpha) <= tolerance;
}

// The text a custom property holds: a CSS string token decoded, anything else as written.
function customPropertyText(value) {
  const text = value.trim();
  const match = /^(["'])((?:[^"'\\\n]|\\[\s\S]|(?!\1)["'])*)\1$/.exec(text);
  if (!match) {
    return text;
  }
  return match[2].replace(/\\(?:([0-9a-fA-F]{1,6})[ \t\n]?|(\n)|([\s\S]))/g, (all, hex, newline, other) => {
    if (hex !== undefined) {
      const code = parseInt(hex, 16);
      return String.fromCodePoint(code === 0 || code > 0x10ffff || (code >= 0xd800 && code <= 0xdfff) ? 0xfffd : code);
    }
    return newline !== undefined ? '' : other;
  });
}

function pageFor(css, checks) {
  const probes = checks.map((check, index) => check.css === 'custom' ? `<div id="probe${index}"></div>` :
    `<div id="probe${index}" style="${check.css}: ${check.wrap ? check.wrap.replace('VALUE', `var(${check.property})`) : `var(${check.property})`}"></div>`);
  return `<!doctype html><html><head><style>${css}</style></head><body>${probes.join('')}</body></html>`;
}

async function main() {
  const plan = JSON.parse(fs.readFileSync(process.argv[2], 'utf8'));
  if (!fs.existsSync(chromiumPath)) {
    console.log(`skipped: ${chromiumPath} is missing`);
    process.exit(SKIP);
  }
  const browser = await chromium.launch({
    executablePath: chromiumPath,
    args: ['--headless', '--no-sandbox', '--disable-gpu', '--disable-background-networking',
      '--disable-component-update', '--disable-sync', '--no-first-run'],
  });
  let failures = 0;
  try {
    const page = await browser.newPage();
    for (const sheet of plan.sheets) {
      let css;
      try {
        css = await compile(sheet);
      } catch (error) {
        console.log(`FAIL ${path.basename(sheet.file)}: ${sheet.language} compilation failed: ${error.message}`);
        failures += 1;
        continue;
      }
      await page.setContent(pageFor(css, sheet.checks));
      for (const [mode, media] of Object.entries(modes)) {
        await page.emulateMedia(media);
        const computed = await page.evaluate((checks) => checks.map((check, index) => (check.css === 'custom'
          ? getComputedStyle(document.documentElement).getPropertyValue(check.property)
          : getComputedStyle(document.getElementById(`probe${index}`)).getPropertyValue(check.css))), sheet.checks);
        sheet.checks.forEach((check, index) => {
          const expected = check.expect[mode];
          if (!expected) {
            return;
          }
          const actual = computed[index];
          const ok = expected.string !== undefined ? customPropertyText(actual) === expected.string
            : expected.contains !== undefined ? actual.includes(expected.contains)
              : sameColour(parseColour(actual), expected);
          if (!ok) {
            failures += 1;
            console.log(`FAIL ${path.basename(sheet.file)} ${mode} ${check.property}: got ${JSON.stringify(actual)}, ` +
              `expected ${JSON.stringify(expected)}`);
          }
        });
      }
      console.log(`checked ${path.basename(sheet.file)} (${sheet.language}, ${sheet.checks.length} values)`);
    }
  } finally {
    await browser.close();
  }
  process.exit(failures === 0 ? 0 : 1);
}

main().catch((error) => {
  console.log(`FAIL ${error.stack || error}`);
  process.exit(1);
});
