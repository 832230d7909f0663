-- Without draft a part scrapes along the mould.
dfm.sound()
for _, wall in ipairs(part.draft({pull = params.pull}).faces) do
    -- Undercuts are another rule's matter, and a face that the parting line crosses leaves on both sides.
    if not wall.undercut and wall.half ~= "both" then
        dfm.at_least {
            value = wall.angle, limit = params.limit, unit = "deg", what = "the draft of a wall",
            at = {faces = {wall.face}}, label = "little draft",
        }
    end
end
