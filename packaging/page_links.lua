-- Pages that lie beside each other as HTML link to each other as such.
function Link(link)
  link.target = link.target:gsub('^([%w-]+)%.md', '%1.html')
  return link
end
