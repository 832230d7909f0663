-- A drill that comes through on one side first grabs.
dfm.sound()
for _, hole in ipairs(part.holes()) do
    if hole.bottom == "through" and not hole.square_exit then
        result.finding {
            message = string.format("a hole of %s comes out of a face that is not flat or not at right angles to it",
                dfm.text(hole.diameter, "mm")),
            at = {faces = hole.faces, label = "inclined exit"},
        }
    end
end
