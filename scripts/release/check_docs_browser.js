// Opens the packaged reference in headless Chromium as a reader would, from the file system
// with every network request refused: the index, a search for VFile_Compress, the first hit,
// a link from there, and one function page opened directly. Screenshots go to SHOTS.
// Usage: node check_docs_browser.js DOCS_FOLDER SHOTS_FOLDER   (playwright-core on NODE_PATH)
"use strict";
const path = require("path");
const fs = require("fs");
const os = require("os");
const { chromium } = require("playwright-core");

const docs = path.resolve(process.argv[2]);
const shots = path.resolve(process.argv[3]);
const url = (file) => "file://" + path.join(docs, file);
const failures = [];
const expect = (ok, what) => { if (!ok) failures.push(what); };

(async () => {
    fs.mkdirSync(shots, { recursive: true });
    const profile = fs.mkdtempSync(path.join(os.tmpdir(), "vf-chromium-"));
    const context = await chromium.launchPersistentContext(profile, {
        executablePath: process.env.VF_CHROMIUM || "/usr/bin/chromium",
        headless: true,
        args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
               "--disable-background-networking", "--disable-component-update", "--disable-sync"],
        viewport: { width: 1280, height: 900 },
    });
    const page = context.pages()[0] || await context.newPage();
    const network = [];
    await context.route("**/*", (route) => {
        const u = route.request().url();
        if (u.startsWith("file://")) return route.continue();
        network.push(u);
        return route.abort();
    });
    const errors = [];
    page.on("pageerror", (e) => errors.push(String(e)));
    page.on("console", (m) => { if (m.type() === "error") errors.push(m.text()); });

    try {
        await page.goto(url("index.html"));
        const rows = await page.locator("table.functions tbody tr").count();
        expect(rows === 19, `index lists ${rows} functions, not 19`);
        expect((await page.title()).includes("Vantafile"), "index has no title");

        await page.fill("#search", "VFile_Compress");
        const first = page.locator("#results li a").first();
        await first.waitFor({ timeout: 5000 });
        const firstText = await first.textContent();
        const firstHref = await first.getAttribute("href");
        expect(firstText.startsWith("VFile_Compress"), `first hit is "${firstText}"`);
        expect(firstHref === "vfile_compress.html", `first hit leads to ${firstHref}`);
        await page.screenshot({ path: path.join(shots, "index-search.png") });

        await first.click();
        await page.waitForURL(/vfile_compress\.html$/);
        const heading = await page.locator("main h2").first().textContent();
        expect(heading === "VFile_Compress", `the page's heading is "${heading}"`);
        const proto = await page.locator("main pre").first().textContent();
        expect(proto.startsWith("VFile_Compress( sourcePath ; targetPath )"), `prototype "${proto}"`);
        expect(await page.locator("figure.checked-example").first().isVisible(),
               "no checked example visible");
        await page.screenshot({ path: path.join(shots, "vfile_compress.png"), fullPage: true });

        // Follow a link in the navigation to another function.
        await page.locator('nav.pages a[href="vfile_decompress.html"]').click();
        await page.waitForURL(/vfile_decompress\.html$/);
        const next = await page.locator("main h2").first().textContent();
        expect(next === "VFile_DeCompress", `after the link the heading is "${next}"`);

        // A cross-page link inside the text lands on its anchor.
        await page.goto(url("vfile_copy.html"));
        const long = page.locator('main a[href*="#long-paths-in-copy-move-and-delete"]').first();
        await long.click();
        await page.waitForURL(/vfile_move\.html#long-paths-in-copy-move-and-delete$/);
        expect(await page.locator("#long-paths-in-copy-move-and-delete").isVisible(),
               "the link's anchor is not shown");

        await page.goto(url("vfile_version.html"));
        const version = await page.locator("main pre").first().textContent();
        expect(version.startsWith("VFile_Version( { versionFormat } )"), `prototype "${version}"`);
        await page.screenshot({ path: path.join(shots, "vfile_version.png"), fullPage: true });
    } catch (e) {
        failures.push(String(e));
    }
    expect(errors.length === 0, "script errors: " + errors.join("; "));
    expect(network.length === 0, "network requests: " + network.join(", "));
    await context.close();
    fs.rmSync(profile, { recursive: true, force: true });
    for (const f of failures) console.log("FAILED:", f);
    console.log(failures.length ? `browser check: ${failures.length} failed`
                                : `browser check: index, search, links and pages work offline; screenshots in ${shots}`);
    process.exit(failures.length ? 1 : 0);
})();
