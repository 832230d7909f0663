# A public header as Doxygen reads it, line for line: the file is documented, so that its free functions are, and so are
# the operations whose meaning the language gives, where a header has no words for them.
NR == 1 { printf "/** @file */ " }

function isOfClass(parameters) { return parameters ~ "^(const )?" class "(<[A-Za-z]*>)? ?&&? ?[a-z]*[)]" }

# What is to say of an operation, or nothing when it is an ordinary one.
function words(line,    head, parameters, at) {
    if (line ~ /= delete;$/) return "Not offered."
    if (line ~ /^ *(friend )?(constexpr )?(bool|auto|[a-z:_]*ordering) operator(==|!=|<=>) ?\(/) return "Compares by value."
    if (line ~ /^ *[^(]* \*?(begin|end)\(\)/) return "For loops over all elements."
    at = index(line, "(")
    if (!at) return ""
    head = substr(line, 1, at - 1)
    parameters = substr(line, at + 1)
    if (head ~ "^ *(virtual )?~" class "$") return "Releases what it holds."
    if (head ~ "^ *(explicit )?" class "$" && parameters ~ /^\) = default;$/) return "As its fields are made."
    if ((head ~ "^ *" class "$" || head ~ /operator=$/) && isOfClass(parameters))
        return parameters ~ /^[^)]*&&/ ? "Takes over what the other one holds." : "Copies what the other one holds."
    return ""
}

{
    if (match($0, /^ *(class|struct) ([A-Z_]+ )?[A-Za-z]+( : .*| final.*)? \{$/)) {
        class = $0
        sub(/( : .*| final.*)? \{$/, "", class)
        sub(/.* /, "", class)
    }
    if (/^ *\/\/\/ ?@\{/) inside = 1
    if (/^ *\/\/\/ ?@\}/) inside = 0
    text = before || inside || /\/\/\/</ ? "" : words($0)
    before = /^ *\/\/\/ ?[^@ ]/
    print (text == "" ? "" : "/** " text " */ ") $0
}
