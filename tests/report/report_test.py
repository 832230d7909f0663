"""Opens a report in headless Chromium and uses it as a person would.

Usage: report_test.py WRITE_REPORT RESULTS.json FOLDER. Ends with 77 where the browser's driver is missing.
"""

import json
import os
import subprocess
import sys
import time
import unittest

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
    from selenium.webdriver.common.by import By
    from selenium.webdriver.common.keys import Keys
except ImportError:
    print("skipped: no python3-selenium")
    sys.exit(77)
DRIVER, BROWSER = "/usr/bin/chromedriver", "/usr/bin/chromium"
if not (os.path.exists(DRIVER) and os.path.exists(BROWSER)):
    print("skipped: no chromium-driver")
    sys.exit(77)

WRITE_REPORT, RESULTS, FOLDER = sys.argv[1:4]
MARKUP = '</script><img src=x onerror="document.title=\'harmed\'"><b>part</b>.stl'
FLAGS = ["--headless=new", "--no-sandbox", "--disable-quic", "--no-first-run", "--disable-background-networking",
         "--disable-component-update", "--disable-sync", "--use-angle=swiftshader", "--enable-unsafe-swiftshader",
         "--window-size=1440,900"]


def browser(*flags):
    options = webdriver.ChromeOptions()
    options.binary_location = BROWSER
    for flag in FLAGS + list(flags):
        options.add_argument(flag)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service(DRIVER), options=options)


def write_report(name, change=lambda run: None):
    with open(RESULTS, encoding="utf-8") as file:
        run = json.load(file)
    change(run)
    changed, page = (os.path.join(FOLDER, name + ending) for ending in (".json", ".html"))
    with open(changed, "w", encoding="utf-8") as file:
        json.dump(run, file)
    subprocess.run([WRITE_REPORT, changed, page], check=True)
    return "file://" + page


def add_markup(run):
    part = run["parts"][0]
    part["path"] = "parts/" + MARKUP
    part["rules"][0]["name"] = MARKUP
    part["rules"][0]["findings"][0]["message"] = MARKUP
    part["rules"][0]["findings"][0]["places"][0]["label"] = MARKUP


class ReportCase(unittest.TestCase):
    flags = ()

    @classmethod
    def setUpClass(cls):
        cls.page = browser(*cls.flags)

    @classmethod
    def tearDownClass(cls):
        cls.page.quit()

    def open(self, name, change=lambda run: None):
        self.page.get(write_report(name, change))

    def tearDown(self):
        self.assertEqual([], self.page.get_log("browser"))

    def find(self, selector):
        return self.page.find_elements(By.CSS_SELECTOR, selector)

    def rows(self):
        return [row.text for row in self.find("#rows tbody tr")]

    def camera(self):
        return self.page.execute_script("return report.view.direction()")

    def settle(self):
        before = self.camera()
        for _ in range(50):
            time.sleep(0.1)
            now = self.camera()
            if now == before:
                return now
            before = now
        self.fail("the part never stops to turn")


class Report(ReportCase):
    def setUp(self):
        self.open("report")

    def test_shows_what_did_not_pass_first_and_worst_first(self):
        rows = self.rows()
        self.assertEqual(5, len(rows))
        self.assertIn("the wall is 1.20 mm", rows[0])
        self.assertEqual(["1", "1", "1", "1", "2"], [tile.text for tile in self.find("#tiles b")])
        self.assertIn("the waiver expired", self.find("#notices")[0].text)

    def test_filters_by_verdict_text_and_severity(self):
        self.find("#tiles [data-verdict=passed]")[0].click()
        self.assertEqual(7, len(self.rows()))
        self.find("#search")[0].send_keys("HOUSING moulding")
        self.assertEqual(1, len(self.rows()))
        self.find("#search")[0].clear()
        self.page.execute_script(
            "const s = document.getElementById('severity-filter'); s.value = 'major'; s.dispatchEvent(new Event('change'))")
        self.assertEqual(2, len(self.rows()))

    def test_sorts_by_a_column_both_ways_with_what_lacks_it_last(self):
        measured = [head for head in self.find("thead button") if head.text == "Measured"][0]
        measured.click()
        self.assertIn("1.00 mm", self.rows()[0])
        measured.click()
        self.assertIn("1.40 mm", [row for row in self.rows() if "mm" in row][0])

    def test_click_on_a_finding_turns_the_part_to_it(self):
        first = self.settle()
        self.find("#rows tbody tr")[4].click()
        self.assertNotEqual(first, self.settle())
        self.assertIn("1 mm", self.find("#detail")[0].text)
        self.assertIn("Baseline".lower(), self.find("#detail .waiver")[0].text.lower())

    def test_picture_shows_part_and_mark(self):
        self.settle()
        colours = self.page.execute_script("""
            const canvas = document.querySelector('#picture canvas');
            const flat = document.createElement('canvas');
            flat.width = canvas.width; flat.height = canvas.height;
            const context = flat.getContext('2d');
            context.drawImage(canvas, 0, 0);
            const pixels = context.getImageData(0, 0, flat.width, flat.height).data;
            let grey = 0, red = 0;
            for (let i = 0; i < pixels.length; i += 4) {
              if (pixels[i + 3] < 200) continue;
              if (pixels[i] > 150 && pixels[i + 1] < 80) red += 1; else grey += 1;
            }
            return [grey, red];""")
        self.assertGreater(colours[0], 5000)
        self.assertGreater(colours[1], 20)

    def test_keyboard_reaches_rows_and_picture(self):
        self.find("body")[0].send_keys("/")
        self.assertEqual("search", self.page.switch_to.active_element.get_attribute("id"))
        self.page.execute_script("document.querySelector('#rows tbody tr').focus()")
        self.page.switch_to.active_element.send_keys(Keys.ARROW_DOWN)
        self.assertIn("signal 11", self.find("#detail")[0].text)
        before = self.settle()
        self.find("#picture")[0].send_keys(Keys.ARROW_LEFT)
        self.assertNotEqual(before, self.settle())

    def test_paper_form_lists_every_part_with_its_picture(self):
        self.page.execute_script("window.dispatchEvent(new Event('beforeprint'))")
        self.assertEqual(3, len(self.find("#paper article")))
        self.assertGreater(len(self.find("#paper svg circle")), 0)
        self.assertIn("agreed with the mould shop", self.find("#paper")[0].get_attribute("textContent"))

    def test_markup_in_texts_stays_text(self):
        self.open("markup", add_markup)
        self.assertNotIn("harmed", self.page.title)
        self.assertEqual([], self.find("#rows img, #detail img, #picture img"))
        self.assertIn("<b>part</b>.stl", self.rows()[0])


class ReportWithoutWebGL(ReportCase):
    flags = ("--disable-3d-apis",)

    def test_draws_the_part_and_its_marks_without_webgl(self):
        self.open("drawn")
        self.assertGreater(len(self.find("#picture svg path")), 3)
        self.assertEqual(1, len(self.find("#picture svg circle")))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"])
