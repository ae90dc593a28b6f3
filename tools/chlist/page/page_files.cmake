# The files of the page, in the folder browser; the scripts in the order in which the browser reads them.
set(page_html_files page.html)
set(page_css_files page.css sections.css table.css details.css)
set(page_js_files model.js table.js filters.js details.js findings.js plan.js page.js)
