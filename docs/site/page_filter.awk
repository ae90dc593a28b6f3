# Makes a page in Markdown one of the site. Headings get the anchors that links name them by, under the page's name
# since the site has one space of anchors: "## The list" of file-format.md becomes file-format-the-list. Links to
# headings are changed with them; links to headers lead to their families; of links to files that the site has not, the
# text is left.

function anchor_of(heading) {
  heading = tolower(heading)
  gsub(/[^a-z0-9 _-]/, "", heading)
  gsub(/ /, "-", heading)
  return page "-" heading
}

function with_anchors(line, page_of_link, before, link) {
  before = ""
  while (match(line, /\]\([a-z_\/.-]*#[a-z0-9_-]+\)/)) {
    link = substr(line, RSTART + 2, RLENGTH - 3)
    page_of_link = link
    sub(/(\.md)?#.*/, "", page_of_link)
    sub(/.*\//, "", page_of_link)
    sub(/.*#/, "", link)
    before = before substr(line, 1, RSTART + 1) "#" (page_of_link == "" ? page : page_of_link) "-" link ")"
    line = substr(line, RSTART + RLENGTH)
  }
  return before line
}

function family_of(header) {
  sub(/.*\//, "", header)
  sub(/\.h$/, "", header)
  return header == "channel" ? "rules" : header == "list" || header == "verbosity" ? "base" : header
}

function with_families(line, before, link, text, target) {
  before = ""
  while (match(line, /\[[^]]*\]\((\.\.\/)+[^)#]*\)/)) {
    link = substr(line, RSTART, RLENGTH)
    text = target = link
    sub(/^\[/, "", text)
    sub(/\]\(.*/, "", text)
    sub(/^\[[^]]*\]\(/, "", target)
    sub(/\)$/, "", target)
    if (target ~ /\.h$/)
      link = "[" text "](@ref " family_of(target) ")"
    else if (target !~ /^\.\.\/[a-z_-]+\.md$/ || FILENAME !~ /\/guides\//)
      link = text
    before = before substr(line, 1, RSTART - 1) link
    line = substr(line, RSTART + RLENGTH)
  }
  return before line
}

FNR == 1 {
  page = FILENAME
  sub(/.*\//, "", page)
  sub(/\.md$/, "", page)
}
/^```/ { in_block = !in_block }
in_block { print; next }
/^##+ / {
  anchor = anchor_of(substr($0, index($0, " ") + 1))
  times = seen[anchor]++
  print $0 " {#" anchor (times ? "-" times : "") "}"
  next
}
{ print with_families(with_anchors($0)) }
