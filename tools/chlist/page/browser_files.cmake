# What browsers get, below the tool's folder; styles and scripts in the order in which the browser reads them. The report
# holds all of its files within one page; the editor serves each by its name.
set(shared_styles page/browser/page.css page/browser/controls.css)
set(shared_files page/browser/elements.js page/browser/model.js page/browser/marks.js)
set(report_files
  page/browser/page.html
  ${shared_styles} page/browser/sections.css page/browser/plan.css page/browser/table.css page/browser/details.css
  page/browser/print.css
  ${shared_files} page/browser/list.js page/browser/table.js page/browser/filters.js page/browser/details.js
  page/browser/shown.js page/browser/findings.js page/browser/plan.js page/browser/place.js page/browser/page.js)
set(editor_files
  serve/browser/editor.html
  ${shared_styles} serve/browser/editor.css serve/browser/rows.css serve/browser/dialogs.css
  ${shared_files} serve/browser/server.js serve/browser/arranged.js serve/browser/pane.js serve/browser/search.js
  serve/browser/edits.js serve/browser/drag.js serve/browser/dialogs.js serve/browser/changes.js serve/browser/forms.js
  serve/browser/editor.js)
