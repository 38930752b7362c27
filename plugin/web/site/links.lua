-- Documents link to each other as pages of the site. Links to other files become plain text.
local pages = {
  ["manual.md"] = true, ["skins.md"] = true, ["presets.md"] = true, ["formats.md"] = true,
}
function Link(link)
  local file, heading = link.target:match("^([%w_]+%.md)(#?.*)$")
  if file and pages[file] then
    link.target = file:gsub("%.md$", ".html") .. heading
    return link
  end
  if link.target:match("^%a+://") or link.target:match("^#") then return link end
  return link.content
end
