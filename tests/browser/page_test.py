"""The page of the bill of materials in a headless Chromium.

page_test.py arrange FOLDER              workspaces and settings for the plug-in to write pages from
page_test.py test SMALL.html LARGE.html  what the page does
page_test.py picture PAGE.html FILE.png  what it looks like
"""

import base64
import json
import pathlib
import re
import sys
import tempfile
import unittest

from selenium import webdriver
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.wait import WebDriverWait

HOSTILE = "</script><img src=x onerror=\"window.hacked=1\">"
LARGE_GROUPS = 50
LARGE_PARTS = 1000


# ---- What the plug-in writes pages from


def write_model(folder, name, kind, parameters, components=()):
    model = {
        "format": "hostsim model", "version": 1, "name": name.upper(), "kind": kind,
        "subtype": "solid" if kind == "part" else "design",
        "parameters": [{"name": key, "type": "string", "value": value} for key, value in parameters.items()],
    }
    if kind == "assembly":
        model["features"] = [{"id": i + 1, "model": component} for i, component in enumerate(components)]
    suffix = "prt" if kind == "part" else "asm"
    (folder / f"{name}.{suffix}.1").write_text(json.dumps(model, ensure_ascii=False), encoding="utf-8")


def arrange(folder):
    settings = "[tableCols_sum]\r\ncontent=模型名称,模型数量,SIZE\r\n[tableCols_level]\r\ncontent=层级2,模型名称,模型数量,SIZE\r\n"
    (folder / "plugin" / "KVconfig" / "KvBom.ini").write_bytes(b"\xff\xfe" + settings.encode("utf-16-le"))

    small = folder / "small"
    small.mkdir()
    for name, size in {"bolt": "M10", "screw": "M2", "nut": "", "evil": HOSTILE}.items():
        write_model(small, name, "part", {"SIZE": size} if size else {})
    write_model(small, "sub", "assembly", {"SIZE": "M1"}, ["BOLT.prt", "BOLT.prt", "SCREW.prt"])
    write_model(small, "pump", "assembly", {}, ["SUB.asm", "BOLT.prt", "NUT.prt", "SCREW.prt", "EVIL.prt"])

    large = folder / "large"
    large.mkdir()
    parts = [f"part_{i:04}" for i in range(LARGE_PARTS)]
    for i, name in enumerate(parts):
        write_model(large, name, "part", {"SIZE": f"M{i % 97}"})
    groups = [f"group_{i:02}" for i in range(LARGE_GROUPS)]
    for name in groups:
        write_model(large, name, "assembly", {}, [f"{part.upper()}.prt" for part in parts])
    write_model(large, "plant", "assembly", {}, [f"{group.upper()}.asm" for group in groups])


# ---- The browser


def open_browser(language, profile):
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                     "--window-size=1200,900", f"--user-data-dir={profile}", f"--accept-lang={language}"):
        options.add_argument(argument)
    options.add_experimental_option("prefs", {"intl.accept_languages": language})
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    service = webdriver.chrome.service.Service("/usr/bin/chromedriver")
    return webdriver.Chrome(service=service, options=options)


class PageTest(unittest.TestCase):
    small = large = ""

    @classmethod
    def setUpClass(cls):
        cls.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        cls.browser = open_browser("en-US", cls.profile.name)

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()
        cls.profile.cleanup()

    def open(self, page):
        self.browser.get(page)
        self.assertEqual(self.browser.get_log("browser"), [], "the browser complains")

    def run_script(self, script, *arguments):
        return self.browser.execute_script(script, *arguments)

    def shown(self, form, column):
        """Texts of a column in the rows that are shown, by its number on the page."""
        return self.run_script(
            "return [...document.querySelectorAll(`[data-form=${arguments[0]}] tbody tr:not([hidden])`)]"
            ".map((row) => row.cells[arguments[1]].textContent)", form, column)

    def told(self, form):
        return self.browser.find_element(By.CSS_SELECTOR, f"[data-form={form}] .told").text

    def click_title(self, form, column):
        self.browser.find_elements(By.CSS_SELECTOR, f"[data-form={form}] th button")[column].click()

    def filter(self, form, text):
        field = self.browser.find_element(By.CSS_SELECTOR, f"[data-form={form}] input[type=search]")
        field.clear()
        field.send_keys(text)

    def press(self, key):
        self.browser.switch_to.active_element.send_keys(key)

    def focus_row(self, form, name):
        self.run_script("document.querySelector(`[data-form=${arguments[0]}] tr[data-n=${arguments[1]}]`).click()",
                        form, name)

    def test_hostile_texts_stay_texts(self):
        self.open(self.small)
        self.assertIsNone(self.run_script("return window.hacked"))
        self.assertEqual(self.run_script("return document.images.length"), 0)
        self.assertIn(HOSTILE, self.shown("summed", 4))
        policy = self.run_script("return document.querySelector('meta[http-equiv]').content")
        self.assertTrue(policy.startswith("default-src 'none'; style-src 'sha256-"), policy)
        self.run_script("const script = document.createElement('script'); script.textContent = 'window.hacked = 2';"
                        "document.body.append(script)")
        self.assertIsNone(self.run_script("return window.hacked"), "nothing runs but the page's own script")
        self.browser.get_log("browser")

    def test_sorts_up_down_and_not(self):
        self.open(self.small)
        order = [["SUB", "BOLT", "SCREW", "NUT", "EVIL"], ["EVIL", "SUB", "SCREW", "BOLT", "NUT"],
                 ["BOLT", "SCREW", "SUB", "EVIL", "NUT"]]
        for expected in (order[1], order[2], order[0]):
            self.click_title("summed", 3)
            self.assertEqual(self.shown("summed", 2), expected)
        self.click_title("summed", 2)
        self.assertEqual(self.shown("summed", 3), sorted(self.shown("summed", 3), key=int), "numbers as numbers")
        # The tree stays one: what is below an assembly is sorted below it.
        self.click_title("levels", 2)
        self.assertEqual(self.shown("levels", 3),
                         ["PUMP", "BOLT", "EVIL", "NUT", "SCREW", "SUB", "BOLT", "SCREW"])

    def test_filters_and_adds_up_what_is_shown(self):
        self.open(self.small)
        self.assertEqual(self.told("summed"), "5 of 5 shown · 0 of 5 done · Total number 8")
        self.filter("summed", "bOl")
        self.assertEqual(self.shown("summed", 2), ["BOLT"])
        self.assertEqual(self.told("summed"), "1 of 5 shown · 0 of 5 done · Total number 3")
        self.filter("levels", "m10")
        self.assertEqual(self.shown("levels", 3), ["PUMP", "SUB", "BOLT", "BOLT"], "parents come along")

    def test_folds_by_key_and_button(self):
        self.open(self.small)
        self.focus_row("levels", "SUB")
        self.press(Keys.ARROW_LEFT)
        self.assertEqual(self.shown("levels", 3), ["PUMP", "SUB", "BOLT", "NUT", "SCREW", "EVIL"])
        self.press(Keys.ARROW_DOWN)
        self.press(Keys.ARROW_UP)
        self.press(Keys.ARROW_RIGHT)
        self.assertEqual(len(self.shown("levels", 3)), 8)
        self.browser.find_element(By.CSS_SELECTOR, "tr[data-n=PUMP] .fold").click()
        self.assertEqual(self.shown("levels", 3), ["PUMP"])

    def test_ticks_stay_after_a_reload(self):
        self.open(self.small)
        self.focus_row("summed", "NUT")
        self.press(Keys.SPACE)
        self.browser.find_element(By.CSS_SELECTOR, "[data-form=levels] tr[data-n=SUB] input").click()
        self.open(self.small)
        self.assertTrue(self.told("summed").startswith("5 of 5 shown · 1 of 5 done"), self.told("summed"))
        self.assertIn(" 1 of 8 done", self.told("levels"))
        done = self.run_script("return [...document.querySelectorAll('tr.done')].map((row) => row.dataset.n)")
        self.assertEqual(done, ["SUB", "NUT"])
        self.run_script("localStorage.clear()")

    def test_keys_reach_the_filter_and_the_help(self):
        self.open(self.small)
        self.focus_row("summed", "NUT")
        self.press("/")
        self.press("screw")
        self.assertEqual(self.shown("summed", 2), ["SCREW"])
        self.press(Keys.ESCAPE)
        self.assertEqual(len(self.shown("summed", 2)), 5)
        self.press("?")
        self.assertTrue(self.browser.find_element(By.TAG_NAME, "dialog").is_displayed())

    def test_finds_what_is_not_drawn(self):
        self.browser.set_window_size(800, 300)
        try:
            self.open(self.small)
            drawn = "return document.querySelector('[data-form=summed] tbody').lastElementChild.cells[1]" \
                ".checkVisibility({contentVisibilityAuto: true})"
            self.assertFalse(self.run_script(drawn))
            self.assertTrue(self.run_script("return window.find('onerror', false, true)"))
        finally:
            self.browser.set_window_size(1200, 900)

    def test_hides_columns(self):
        self.open(self.small)
        self.run_script("document.querySelector('[data-form=summed] .columns').open = true")
        self.browser.find_elements(By.CSS_SELECTOR, "[data-form=summed] .columns input")[1].click()
        cell = "document.querySelector('[data-form=summed] tbody tr').cells[%d].checkVisibility()"
        self.assertEqual([self.run_script("return " + cell % i) for i in (1, 2, 3)], [True, False, True])

    def test_prints_without_controls(self):
        self.open(self.small)
        pdf = base64.b64decode(self.browser.print_page())
        self.assertTrue(pdf.startswith(b"%PDF"))
        self.assertEqual(re.findall(rb"/Count (\d+)", pdf), [b"1"])
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
        try:
            self.assertFalse(self.browser.find_element(By.CSS_SELECTOR, ".controls").is_displayed())
        finally:
            self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})

    def test_is_readable_without_script(self):
        self.browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": True})
        try:
            self.browser.get(self.small)
            root = self.browser.execute_cdp_cmd("DOM.getDocument", {})["root"]["nodeId"]
            cells = self.browser.execute_cdp_cmd(
                "DOM.querySelectorAll", {"nodeId": root, "selector": "tbody tr:last-child td"})["nodeIds"]
            boxes = [self.browser.execute_cdp_cmd("DOM.getBoxModel", {"nodeId": cell})["model"] for cell in cells]
            self.assertEqual(len(boxes), 9)
            self.assertTrue(all(box["width"] > 20 and box["height"] > 10 for box in boxes))
        finally:
            self.browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": False})

    def test_speaks_chinese_to_a_chinese_browser(self):
        with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
            browser = open_browser("zh-CN", profile)
            try:
                browser.get(self.small)
                self.assertTrue(browser.find_element(By.CLASS_NAME, "told").text.startswith("显示 8 / 8"))
            finally:
                browser.quit()

    def test_draws_only_what_is_on_the_screen(self):
        self.open(self.large)
        rows = LARGE_GROUPS * (LARGE_PARTS + 1) + 1
        count = """let drawn = 0;
            for (const row of document.querySelectorAll("[data-form=levels] tbody tr"))
                if (row.cells[1].checkVisibility({contentVisibilityAuto: true})) ++drawn;
            return drawn"""
        self.assertEqual(self.run_script("return document.querySelectorAll('[data-form=levels] tbody tr').length"), rows)
        drawn = self.run_script(count)
        print(f"drawn: {drawn} of {rows} rows")
        self.assertTrue(0 < drawn < 300, drawn)
        self.filter("levels", "part_0007")
        WebDriverWait(self.browser, 20).until(
            lambda _: self.told("levels").startswith(f"{2 * LARGE_GROUPS + 1} of {rows} shown"))
        self.filter("levels", "")
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
        try:
            skipping = "return getComputedStyle(document.querySelector('tbody tr:last-child')).contentVisibility"
            self.assertEqual(self.run_script(skipping), "visible", "paper holds all rows")
        finally:
            self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})


def picture(page, target):
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        browser = open_browser("zh-CN", profile)
        try:
            browser.get(pathlib.Path(page).resolve().as_uri())
            row = browser.find_elements(By.CSS_SELECTOR, "tbody tr")[3]
            row.find_element(By.TAG_NAME, "input").click()
            browser.save_screenshot(target)
        finally:
            browser.quit()


def main():
    if sys.argv[1] == "arrange":
        arrange(pathlib.Path(sys.argv[2]))
        return 0
    if sys.argv[1] == "picture":
        picture(sys.argv[2], sys.argv[3])
        return 0
    PageTest.small, PageTest.large = [pathlib.Path(page).resolve().as_uri() for page in sys.argv[2:4]]
    result = unittest.main(argv=sys.argv[:1], exit=False, verbosity=1).result
    return 0 if result.wasSuccessful() and result.testsRun > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
