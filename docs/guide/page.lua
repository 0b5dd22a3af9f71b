-- SPDX-License-Identifier: GPL-3.0-or-later
-- A page of the guide for a browser: its first heading is its title, links lead to the
-- built pages, and what is there for the test alone goes.

function RawBlock(block)
  if block.format == "html" and block.text:match("^<!%-%-") then
    return {}
  end
end

function Link(link)
  link.target = link.target:gsub("%.md$", ".html"):gsub("%.md#", ".html#")
  return link
end

function CodeBlock(block)
  -- A scrolling block is reached by the keyboard.
  block.attributes.tabindex = "0"
  return block
end

function Pandoc(document)
  for _, block in ipairs(document.blocks) do
    if block.t == "Header" and block.level == 1 then
      document.meta.pagetitle = pandoc.utils.stringify(block)
      break
    end
  end
  return document
end
