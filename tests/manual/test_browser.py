"""The manual in a browser of today: nothing is wider than the window, at 640 and at 1280.

By itself, `python3 -m tests.manual.test_browser`, it also puts all pages into one picture, build/ui/manual.png.

It needs Chromium, which is no part of the set-up: `apt-get install chromium`. Without it the test is skipped.
"""
import json
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from tests.harness.driver import BUILD, BUILT

MANUAL = BUILD / "dist/manual"
BROWSER = shutil.which("chromium")
PICTURE = ["--window-size=2640,24000", f"--screenshot={BUILT / 'manual.png'}"] if __name__ == "__main__" else []
WIDTHS = (640, 1280)
# Each page in a frame of its own; what they measure is written into the document, which the browser then prints.
SHEET = """<!DOCTYPE html><meta charset="utf-8"><body style="margin:8px;background:#888"><pre id="told"></pre>
<script>
const pages = %s, widths = %s, told = [];
// A busy machine makes the browser give up a picture that is there: it is asked for once more, past the browser's memory.
function loads(source) {
  const again = new Image();
  again.src = source + "?again";
  return again.decode().then(() => true, () => false);
}
for (const width of widths) for (const page of pages) {
  const frame = document.createElement("iframe");
  frame.style = `width:${width}px;height:${width == 640 ? 1700 : 1300}px;background:#fff;margin:4px;border:0`;
  frame.onload = async () => {
    const inside = frame.contentDocument.documentElement;
    const broken = [];
    for (const image of frame.contentDocument.images)
      if (!image.naturalWidth && !await loads(image.src)) broken.push(image.src);
    told.push({page, width, wide: inside.scrollWidth, styled: getComputedStyle(inside.querySelector("h1")).color, broken});
    document.getElementById("told").textContent = told.length == pages.length * widths.length ? JSON.stringify(told) : "";
  };
  frame.src = page;
  document.body.append(frame);
}
</script>"""


@unittest.skipUnless(BROWSER, "no Chromium here")
class InChromium(unittest.TestCase):
    def test_every_page_fits_the_window_and_shows_its_pictures(self):
        pages = sorted(path.name for path in MANUAL.glob("*.html"))
        with tempfile.TemporaryDirectory() as folder:
            work = Path(folder) / "manual"
            shutil.copytree(MANUAL, work)
            (work / "sheet.html").write_text(SHEET % (json.dumps(pages), json.dumps(WIDTHS)))
            BUILT.mkdir(parents=True, exist_ok=True)
            common = [BROWSER, "--headless", "--no-sandbox", "--disable-gpu", "--allow-file-access-from-files", "--hide-scrollbars",
                      f"--user-data-dir={folder}/profile", "--virtual-time-budget=8000"]
            told = subprocess.run([*common, *PICTURE, "--dump-dom", (work / "sheet.html").as_uri()], check=True, text=True,
                                  timeout=120, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
        measured = json.loads(re.search(r'<pre id="told">(.*?)</pre>', told, re.S)[1])
        self.assertEqual(len(measured), len(pages) * len(WIDTHS))
        for one in measured:
            self.assertLessEqual(one["wide"], one["width"], one)
            self.assertEqual(one["broken"], [], one)
            self.assertEqual(one["styled"], "rgb(16, 28, 64)", one)


if __name__ == "__main__":
    unittest.main(verbosity=2)
