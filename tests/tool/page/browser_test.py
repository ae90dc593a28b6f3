"""The page of `chlist report` in a browser: tables, plan, widths, colours; and that it neither complains nor asks for
anything.

usage: browser_test.py CHLIST [unittest's arguments]    exit code 77 when there is no browser
"""

import base64
import csv
import io
import pathlib
import re
import subprocess
import time

import page_host
import sample_lists
from page_host import CHLIST, OVERFLOW, TEXT

SHOWN = "return [...document.querySelectorAll('#rows tr[aria-rowindex]')]"
NAMES = SHOWN + ".map(row => row.querySelector('td.name').textContent)"
CELLS = SHOWN + ".map(row => row.querySelector('td.' + arguments[0])?.textContent)"
ROWS = "return Number(document.getElementById('table').getAttribute('aria-rowcount')) - 1"
ATTRIBUTE = "return document.querySelector(arguments[0]).getAttribute(arguments[1])"
IS_HIDDEN = "return document.querySelector(arguments[0]).hidden"

# The contrast of every text that is shown with what is behind it, as far as it is below the one that is wanted.
LOW_CONTRAST = """
const canvas = document.createElement('canvas').getContext('2d', { willReadFrequently: true });
const rgb = (colour) => {
  canvas.clearRect(0, 0, 1, 1);
  canvas.fillStyle = colour;
  canvas.fillRect(0, 0, 1, 1);
  return [...canvas.getImageData(0, 0, 1, 1).data];
};
const light = (colour) => rgb(colour).slice(0, 3)
  .map((v) => v / 255).map((v) => v <= .03928 ? v / 12.92 : ((v + .055) / 1.055) ** 2.4)
  .reduce((sum, v, i) => sum + v * [.2126, .7152, .0722][i], 0);
const ground = (element) => {
  for (let at = element; at; at = at.parentElement) {
    const colour = getComputedStyle(at).backgroundColor;
    if (rgb(colour)[3] === 255) {
      return colour;
    }
  }
  return 'white';
};
const found = new Set();
for (const element of document.querySelectorAll('body *')) {
  const hasText = [...element.childNodes].some((node) => node.nodeType === 3 && node.data.trim());
  if (hasText && element.checkVisibility() && !element.closest('script, style')) {
    const isDrawn = element.closest('svg') !== null;
    const style = getComputedStyle(element);
    const [a, b] = [light(isDrawn ? style.fill : style.color), light(ground(element))].sort((x, y) => y - x);
    if ((a + .05) / (b + .05) < 4.5) {
      found.add(`${element.tagName}.${element.className.baseVal ?? element.className} ${((a + .05) / (b + .05)).toFixed(2)}`);
    }
  }
}
return [...found];
"""


folder = None  # of lists, pages and the browser's profile
shown = None   # the browser


def setUpModule():
    global folder, shown
    folder, shown = page_host.open_browser()


class Page(page_host.PageTest):
    """Opens a page before each test; after it, nothing was complained of or asked for."""

    def page(self, name):
        source, page = (pathlib.Path(folder, name + end) for end in (".dat", ".html"))
        if not page.exists():
            source.write_bytes(sample_lists.LISTS[name]())
            done = subprocess.run([CHLIST, "report", source, "-o", page], stdout=subprocess.DEVNULL)
            self.assertIn(done.returncode, (0, 1))
        return page

    def setUp(self):
        self.addCleanup(self.expect_silence)
        shown.resize(1280, 900)
        shown.prefer("light")
        self.open("rich")

    def open(self, name):
        shown.open(self.page(name))

    def expect_silence(self):
        self.assertEqual(shown.console(), [])
        asked = [url for url in shown.requests() if not url.startswith(("file://", "data:", "about:"))]
        self.assertEqual(asked, [])

    def run_in_page(self, script, *arguments):
        return shown.run(script, *arguments)

    def frame(self):
        """Until the page is drawn as it is now."""
        shown.run_until_done("const done = arguments[0]; requestAnimationFrame(() => requestAnimationFrame(() => done()))")

    def names(self):
        return self.run_in_page(NAMES)

    def cells(self, column):
        return self.run_in_page(CELLS, column)

    def rows(self):
        return self.run_in_page(ROWS)

    def choose(self, selector, value):
        self.run_in_page("const select = document.querySelector(arguments[0]); select.value = arguments[1];"
                         "select.dispatchEvent(new Event('change'))", selector, value)

    def tab(self, title):
        self.run_in_page("[...document.querySelectorAll('[role=tab]')].find(tab => "
                         "tab.firstChild.data === arguments[0]).click()", title)


class Tables(Page):
    def test_search_narrows_the_table(self):
        every = self.rows()

        shown.type("#search", "premiere polar")

        self.assertLess(0, self.rows())
        self.assertLess(self.rows(), every)
        for name, provider in zip(self.names(), self.cells("provider")):
            self.assertIn("Première", name + provider)
            self.assertIn("Polar", name + provider)
        shown.click("#clear")
        self.assertEqual(self.rows(), every)

    def test_search_that_finds_nothing_says_so(self):
        shown.type("#search", "zzzz")

        self.assertEqual(self.rows(), 0)
        self.assertEqual(self.run_in_page(TEXT, "#nothing"), "Nothing here matches.")

    def test_titles_sort_up_down_and_not(self):
        before = self.names()

        shown.click("th[data-key=frequency] button")
        up = [int(text.replace(",", "")) for text in self.cells("frequency")]
        self.assertEqual(self.run_in_page(ATTRIBUTE, "th[data-key=frequency]", "aria-sort"), "ascending")
        shown.press("enter")
        down = [int(text.replace(",", "")) for text in self.cells("frequency")]
        self.assertEqual(self.run_in_page(ATTRIBUTE, "th[data-key=frequency]", "aria-sort"), "descending")
        shown.press("space")

        self.assertEqual(up, sorted(up))
        self.assertEqual(down, sorted(down, reverse=True))
        self.assertLess(up[-1], down[-1])
        self.assertEqual(self.names(), before)
        self.assertEqual(self.run_in_page(ATTRIBUTE, "th[data-key=frequency]", "aria-sort"), "none")

    def test_filters_take_rows_out(self):
        every = self.rows()
        for select, value, column, text in (("#filter-type", "2", "type", "Radio"),
                                            ("#filter-provider", "=Quayside", "provider", "Quayside"),
                                            ("#filter-access", "scrambled", "marks", "scrambled")):
            self.choose(select, value)
            self.assertTrue(0 < self.rows() < every, select)
            for cell in self.cells(column):
                self.assertIn(text, cell)
            self.choose(select, "")
            self.assertEqual(self.rows(), every)
        for toggle, text in (("favourites", "★"), ("locked", "locked"), ("skipped", "skipped")):
            shown.click(f"#filter-{toggle}")
            self.assertTrue(0 < self.rows() < every, toggle)
            for cell in self.cells("marks"):
                self.assertIn(text, cell)
            shown.click(f"#filter-{toggle}")
        self.choose("#filter-access", "free")
        free = self.rows()
        self.choose("#filter-access", "scrambled")
        self.assertEqual(free + self.rows(), every)

    def test_tabs_show_the_views(self):
        titles = self.run_in_page("return [...document.querySelectorAll('[role=tab]')].map(e => e.textContent)")
        self.assertEqual(titles, ["ALL 760", "TV 603", "Radio 158", "USER 28", "Promotion 2", "In no view 1"])
        self.tab("Radio")
        self.assertEqual(set(self.cells("type")), {"Radio"})
        self.tab("In no view")
        self.assertEqual(self.names(), ["In no view at all"])
        self.tab("Promotion")
        self.assertEqual(self.cells("marks"), ["no service", "no service"])

    def test_favourite_groups_are_chosen_beside_the_tabs(self):
        groups = self.run_in_page("return [...document.getElementById('group').options].map(e => e.textContent)")
        self.assertEqual(groups, ["★ Favourites", "★ Family (17)", "★ Films (13)", "★ Sport & live (18)",
                                  "★ Kitchen radio (15)"])
        self.choose("#group", self.run_in_page("return document.getElementById('group').options[4].value"))
        self.assertEqual(self.rows(), 15)
        self.assertEqual(self.run_in_page("return document.querySelectorAll('[aria-selected=true]').length"), 0)
        self.tab("TV")
        self.assertEqual(self.run_in_page("return document.getElementById('group').value"), "")

    def test_choices_tell_how_many_they_would_show(self):
        def texts(name):
            return self.run_in_page("return [...document.getElementById(`filter-${arguments[0]}`).options]"
                                    ".slice(1).map(each => each.textContent)", name)
        self.assertEqual(texts("type"), ["TV (602)", "Radio (158)"])
        self.assertEqual(len(texts("network")), 3)
        self.choose("#filter-network", "=Cable City")
        shown_there = self.rows()
        self.assertIn(f"Cable City ({shown_there})", texts("network"))
        self.assertEqual(set(self.cells("network")), {"Cable City"})
        tv, radio = (int(text.split("(")[1][:-1]) for text in texts("type"))
        self.assertEqual(tv + radio, shown_there)
        self.choose("#filter-type", "2")
        self.assertEqual(self.rows(), radio)
        self.assertEqual(texts("type")[0], f"TV ({tv})")

    def test_tabs_move_with_the_arrows(self):
        shown.click("#tab-0")
        shown.press("right", "right")

        self.assertEqual(self.run_in_page("return document.activeElement.id"), "tab-2")
        self.assertEqual(self.run_in_page(ATTRIBUTE, "#tab-2", "aria-selected"), "true")
        shown.press("left", "left", "left")
        self.assertEqual(self.run_in_page("return document.activeElement.textContent"), "In no view 1")

    def test_rows_are_reached_and_opened_by_keys(self):
        self.run_in_page("document.getElementById('table').focus()")
        shown.press("end")
        last = self.run_in_page(ATTRIBUTE, "#table", "aria-activedescendant")
        self.assertEqual(last, f"row-{self.rows() - 1}")
        name = self.run_in_page("return document.querySelector('.current .name').textContent")
        shown.press("enter")

        self.assertEqual(self.run_in_page(TEXT, "#details-name"), name)
        self.assertTrue(self.run_in_page("return document.getElementById('details').open"))
        shown.press("escape")
        self.assertFalse(self.run_in_page("return document.getElementById('details').open"))

    def test_thousands_of_rows_are_fast(self):
        self.open("full")
        self.assertEqual(self.rows(), 5000)
        self.assertLess(len(self.names()), 100)
        for text in ("s", "se", "49", "provider 7", "nothing at all", ""):
            before = shown.processor_time()
            self.run_in_page("""
              const search = document.getElementById('search');
              search.value = arguments[0];
              search.dispatchEvent(new Event('input'));
              document.body.getBoundingClientRect()""", text)
            self.assertLess(shown.processor_time() - before, 0.1, text)
        self.run_in_page("document.getElementById('table-box').scrollTop = 1e9")
        self.run_in_page("table.render()")
        self.assertEqual(self.cells("service")[-1], "5000")


class Details(Page):
    def test_are_grouped_and_leave_out_what_nobody_set(self):
        self.run_in_page("table.open(1)")
        topics = self.run_in_page("return [...document.querySelectorAll('#details-topics h3')].map(e => e.textContent)")
        self.assertEqual(topics, ["Service", "Shown as", "Identity", "Streams"])
        fields = self.run_in_page("return [...document.querySelectorAll('#details-topics div')]"
                                  ".map(e => [...e.children].map(each => each.textContent))")
        self.assertIn(["ALL", "2"], fields)
        self.assertNotIn("Country", [name for name, _ in fields])
        self.assertEqual([value for _, value in fields if value in ("", "none", "not set", "no")], [])

    def test_tell_the_identity_as_edits_name_it(self):
        self.run_in_page("table.open(1)")
        self.assertRegex(self.run_in_page(TEXT, "#details-identity"), r"^1:158:1000:10720000H:\d+$")


class Links(Page):
    def reopen(self):
        address = self.run_in_page("return location.href")
        shown.visit("about:blank")
        shown.visit(address)

    def test_lead_to_a_view_its_filters_and_its_order(self):
        self.tab("TV")
        shown.type("#search", "sport")
        self.choose("#filter-access", "free")
        shown.click("#filter-skipped")
        shown.click("th[data-key=name] button")
        names = self.names()
        self.assertLess(0, len(names))

        self.reopen()

        self.assertEqual(self.names(), names)
        self.assertEqual(self.run_in_page(ATTRIBUTE, "th[data-key=name]", "aria-sort"), "ascending")
        self.assertEqual(self.run_in_page("return document.getElementById('search').value"), "sport")

    def test_lead_to_a_service(self):
        self.tab("Radio")
        self.run_in_page("table.open(40)")
        name = self.run_in_page(TEXT, "#details-name")

        self.reopen()

        self.assertTrue(self.run_in_page("return document.getElementById('details').open"))
        self.assertEqual(self.run_in_page(TEXT, "#details-name"), name)
        shown.press("escape")
        self.assertNotIn("open", self.run_in_page("return location.hash"))

    def test_that_name_nothing_show_the_list(self):
        shown.visit(f"file://{self.page('rich')}#view=nothing&transponder=x&sort=&row=-1&search=%E0%A4%A")
        self.assertEqual(self.run_in_page(ATTRIBUTE, "#tab-0", "aria-selected"), "true")


class Elsewhere(Page):
    """What is shown, taken to other programs and onto paper."""

    def test_rows_are_a_file_of_comma_separated_values(self):
        self.open("hostile")
        lines = list(csv.reader(io.StringIO(self.run_in_page("return commaSeparated(shownLines())"), newline="")))
        self.assertEqual(lines[0][:4], ["No.", "Name", "Type", "Provider"])
        self.assertEqual(lines[1][1], sample_lists.HOSTILE[0])
        self.assertEqual({len(line) for line in lines}, {len(lines[0])})

    def test_only_what_is_shown_is_taken(self):
        shown.type("#search", "quarz")
        lines = self.run_in_page("return shownLines()")
        self.assertEqual(len(lines) - 1, self.rows())
        shown.devtools("Browser.grantPermissions", permissions=["clipboardReadWrite", "clipboardSanitizedWrite"])
        shown.click("#copy")
        self.wait_for("return document.getElementById('live').textContent === 'Copied'")

    def test_five_thousand_rows_are_printed_within_seconds(self):
        self.open("full")
        before = time.monotonic()
        printed = base64.b64decode(shown.devtools("Page.printToPDF")["data"])
        self.assertLess(time.monotonic() - before, 60)  # other tests run beside this one; alone it takes a few
        pages = len(re.findall(rb"/Type\s*/Page\b", printed))
        self.assertTrue(40 < pages < 150, pages)

    def test_the_printed_table_fits_the_paper(self):
        self.run_in_page("paper.fill()")
        shown.devtools("Emulation.setEmulatedMedia", media="print")
        self.addCleanup(shown.devtools, "Emulation.setEmulatedMedia", media="")
        shown.resize(720, 1000)
        self.assertLessEqual(self.run_in_page(OVERFLOW), 0)
        self.assertEqual(self.run_in_page("return document.querySelectorAll('#paper tbody tr').length"), 760)
        self.assertEqual(self.run_in_page("return document.querySelector('main').checkVisibility()"), False)


class Plans(Page):
    def scroll_to_plan(self):
        self.run_in_page("document.getElementById('plan').scrollIntoView()")
        self.frame()

    def test_share_one_axis_and_one_scale(self):
        marks = self.run_in_page("""return shownPlans.flatMap((plan) => plan.members.map((each, i) =>
          [each.frequency, plan.marks[i].x.baseVal.value + plan.thickness / 2, each.services.length,
           plan.marks[i].height.baseVal.value]))""")
        heights = {}
        for _, _, count, height in marks:
            heights.setdefault(count, set()).add(round(height, 3))
        self.assertEqual({len(values) for values in heights.values()}, {1})
        in_order = [place for _, place, _, _ in sorted(marks)]
        self.assertEqual(in_order, sorted(in_order))
        self.assertEqual(self.run_in_page("return document.querySelectorAll('#axis svg').length"), 1)

    def test_tell_how_many_services_each_source_has(self):
        captions = self.run_in_page("return [...document.querySelectorAll('.plan .hint')].map(e => e.textContent)")
        self.assertEqual(sum(int(caption.split()[2]) for caption in captions), 761)

    def test_a_polarisation_without_a_letter_has_its_number_and_a_lane(self):
        id_of = self.run_in_page("const { polarisation, text } = identity([1, 2, 3, 11000000, 2, 5]);"
                                 "return [polarisation, text]")
        self.assertEqual(id_of, ["2", "1:2:3:11000000V2:5"])
        lanes = self.run_in_page("return lanesOf(['2', 'V', 'H', 'V', '10'].map((polarisation) => ({ polarisation })))")
        self.assertEqual(lanes, ["H", "V", "2", "10"])

    def test_every_source_has_its_lanes(self):
        lanes = self.run_in_page("return [...document.querySelectorAll('.plan')].map(plan => "
                                 "[...plan.querySelectorAll('.lane')].map(lane => lane.textContent).join(''))")
        self.assertEqual(lanes, ["HV", "HV", "H"])
        self.assertEqual(self.run_in_page("return document.querySelectorAll('.mark').length"), 46 + 27 + 30)

    def test_pointing_at_a_transponder_shows_its_services(self):
        self.assertTrue(self.run_in_page(IS_HIDDEN, "#tip"))
        self.scroll_to_plan()

        shown.point(".mark:nth-of-type(3)")

        names = self.run_in_page("return shownPlans[0].members[2].services.map(each => each.name)")
        listed = self.run_in_page("return [...document.querySelectorAll('#tip li')].map(e => e.textContent)")
        self.assertFalse(self.run_in_page(IS_HIDDEN, "#tip"))
        self.assertEqual(listed[:12], names[:12])
        shown.point("h1")
        self.assertTrue(self.run_in_page(IS_HIDDEN, "#tip"))

    def test_transponders_are_reached_by_keys(self):
        self.run_in_page("document.querySelector('.mark[tabindex=\"0\"]').focus()")
        shown.press("right")

        self.assertIn(self.run_in_page("return shownPlans[0].members[1].services[0].name"),
                      self.run_in_page(TEXT, "#tip"))
        shown.press("enter")
        self.assertEqual(self.rows(), self.run_in_page("return shownPlans[0].members[1].services.length"))
        shown.press("escape")
        self.assertTrue(self.run_in_page(IS_HIDDEN, "#tip"))

    def test_choosing_a_transponder_narrows_the_tables_to_it(self):
        every = self.rows()
        shown.click(".mark:nth-of-type(3)")

        frequency = self.run_in_page("return shownPlans[0].members[2].frequency")
        self.assertEqual(set(self.cells("frequency")), {f"{frequency:,}"})
        self.assertEqual(self.run_in_page(ATTRIBUTE, ".mark:nth-of-type(3)", "aria-pressed"), "true")
        self.assertEqual(self.run_in_page(TEXT, "#transponder-chip"), f"{frequency:,} H")
        shown.click("#transponder-chip")
        self.assertEqual(self.rows(), every)


class Findings(Page):
    def test_are_counted_and_told(self):
        self.assertIn("3 errors", self.run_in_page(TEXT, "#health-counts"))
        shown.click("summary")
        self.assertIn("In no view at all", self.run_in_page(TEXT, "#health-topics"))

    def test_lead_to_their_rows(self):
        self.choose("#filter-type", "2")
        shown.click("#health-badges")
        for text, view, name in (("service 60001", "TV", ""), ("service 60003", "Promotion", ""),
                                 ("is in no view", "In no view", "In no view at all")):
            self.run_in_page("[...document.querySelectorAll('#health-topics a')].find(a => "
                             "a.textContent.includes(arguments[0])).click()", text)
            self.wait_for("return document.querySelector('[aria-selected=true]').firstChild.data === arguments[0]",
                          view)
            self.assertEqual(self.run_in_page(TEXT, ".pointed .name"), name)
            self.assertEqual(self.run_in_page("return document.activeElement.id"), "table")

    def test_are_none_in_a_clean_list(self):
        self.open("clean")

        self.assertEqual(self.run_in_page(TEXT, "#health-counts"), "nothing found")


class Looks(Page):
    def test_no_width_makes_the_page_scroll_sideways(self):
        for name in ("rich", "hostile", "empty"):
            self.open(name)
            for width in (320, 360, 414, 768, 1024, 1920):
                shown.resize(width, 740, is_mobile=width < 500)
                self.frame()
                self.assertLessEqual(self.run_in_page(OVERFLOW), 0, (name, width))

    def test_dark_is_dark(self):
        ground = "return getComputedStyle(document.body).backgroundColor"
        light = self.run_in_page(ground)

        shown.prefer("dark")

        self.assertNotEqual(self.run_in_page(ground), light)

    def test_every_text_stands_out(self):
        for scheme in ("light", "dark"):
            shown.prefer(scheme)
            self.open("rich")
            self.run_in_page("document.getElementById('health').open = true")
            self.assertEqual(self.run_in_page(LOW_CONTRAST), [], scheme)

    def test_the_channels_come_first(self):
        titles = self.run_in_page("return [...document.querySelectorAll('main h2')].map(e => e.textContent)")
        self.assertEqual(titles, ["Channels", "Health", "Transponders"])

    def test_keeps_nobody_out(self):
        for scheme, width in (("light", 1280), ("dark", 1280), ("light", 360)):
            shown.resize(width, 800, is_mobile=width < 500)
            shown.prefer(scheme)
            self.open("rich")
            self.run_in_page("document.getElementById('health').open = true")
            self.expect_open_to_everybody((scheme, width))
            self.run_in_page("table.open(1)")
            self.expect_open_to_everybody((scheme, width, "details"))

    def test_nothing_moves_while_the_page_opens(self):
        shifts = shown.run_until_done("""
          const done = arguments[0];
          new PerformanceObserver((seen) => done(seen.getEntries().map((each) => each.value)))
            .observe({ type: 'layout-shift', buffered: true });
          setTimeout(() => done([]), 300);""")
        self.assertEqual(shifts, [])


class Texts(Page):
    def test_hostile_names_are_only_shown(self):
        self.open("hostile")

        self.assertEqual(self.run_in_page("return document.title"), "hostile.dat – channel list")
        self.assertEqual(self.names()[:8], sample_lists.HOSTILE)
        self.assertEqual(self.run_in_page("return document.querySelectorAll('img').length"), 0)
        self.assertEqual(self.run_in_page("return document.scripts.length"), 2)
        self.assertEqual(self.names()[8], "\ufffd\ufffd\ufffd raw")

    def test_an_empty_list_has_a_page(self):
        self.open("empty")

        self.assertEqual(self.rows(), 0)
        self.assertEqual(self.run_in_page(TEXT, "#nothing"), "This view has no entries.")
        self.assertEqual(self.run_in_page(TEXT, "#plan-count"), "The list holds none.")
        self.assertEqual(self.run_in_page(TEXT, "#plans"), "")


if __name__ == "__main__":
    page_host.run_tests()
