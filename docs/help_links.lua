-- The help text stands alone: links to files beside the manual, or to its own headings, become
-- plain text.
function Link(link)
    if link.target:match("^%a+://") then return link end
    return link.content
end
