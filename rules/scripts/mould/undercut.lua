-- Each undercut takes a slide.
dfm.sound()
for _, undercut in ipairs(part.draft({pull = params.pull}).undercuts) do
    result.finding {
        message = string.format("an undercut of %d mm² keeps the part in the tool", math.ceil(undercut.area)),
        at = {faces = undercut.faces, label = "undercut"},
    }
end
