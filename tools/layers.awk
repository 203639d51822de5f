# Reads the names of all sources on the standard input and tools/floors.txt; see tools/layers.

function complain(place, text) {
    print place ": " text
    faults++
}

function inside(path, folder) {
    return path == folder || index(path, folder "/") == 1
}

function folderOf(path) {
    sub(/\/[^\/]*$/, "", path)
    return path
}

function matches(header, pattern) {
    if (pattern ~ /\*/) return index(header, substr(pattern, 1, index(pattern, "*") - 1)) == 1
    return header == pattern
}

# The floor with the longest name that holds the file; 0 when none does.
function floorOf(file,    path) {
    for (path = folderOf(file); ; path = folderOf(path)) {
        if (path in floorNumber) return floorNumber[path]
        if (path !~ /\//) return 0
    }
}

function readFloors(line, words, count, i) {
    while ((getline line < "tools/floors.txt") > 0) {
        count = split(line, words, " ")
        if (count < 2 || words[1] ~ /^#/) continue
        if (words[1] == "floor") {
            floorNumber[words[2]] = ++floors
            floorName[floors] = words[2]
            continue
        }
        rules++
        ruleKind[rules] = words[1]
        ruleFolder[rules] = words[2]
        for (i = 3; i <= count; i++) ruleWords[rules] = ruleWords[rules] " " words[i]
    }
}

# Whether the file lies in one of the folders of the list.
function inOneOf(file, list,    words, count, i) {
    count = split(list, words, " ")
    for (i = 1; i <= count; i++) if (inside(file, words[i])) return 1
    return 0
}

function checkRestrictions(file, target, place,    i) {
    for (i = 1; i <= rules; i++) {
        if (ruleKind[i] == "only" && inside(target, ruleFolder[i]) && !inside(file, ruleFolder[i]) &&
            !inOneOf(file, ruleWords[i]))
            complain(place, folderOf(file) " may not see " ruleFolder[i])
        if (ruleKind[i] == "sees" && inside(file, ruleFolder[i]) && !inside(target, ruleFolder[i]) &&
            !inOneOf(target, ruleWords[i]))
            complain(place, ruleFolder[i] " may see only" ruleWords[i])
    }
}

function checkOwn(file, target, place) {
    if (!(target in known)) {
        complain(place, "no file " target " in the tree (includes are written from its root)")
        return
    }
    if (floorOf(target) > floorOf(file))
        complain(place, floorName[floorOf(file)] " lies below " floorName[floorOf(target)])
    if (target ~ /_p\.h$/ && target ~ /^host\// && file !~ /^(host|tests|bench)\//)
        complain(place, target " is private to the host")
    checkRestrictions(file, target, place)
    addEdge("file", file, target, place)
    if (folderOf(file) != folderOf(target)) addEdge("folder", folderOf(file), folderOf(target), place)
}

# Standard headers have no folder and, but for the C ones, no ending.
function isStandard(header) {
    return header ~ /^[a-z_0-9]+$/ || header ~ /^(assert|ctype|errno|limits|math|stddef|stdint|stdio|stdlib|string|time|wchar)\.h$/
}

function checkForeign(file, header, place,    i, words, count, k) {
    if (isStandard(header)) return
    for (i = 1; i <= rules; i++) {
        if (!inside(file, ruleFolder[i]) || ruleKind[i] !~ /^(system|library)$/) continue
        count = split(ruleWords[i], words, " ")
        for (k = 1; k <= count; k++) {
            if (!matches(header, words[k])) continue
            if (ruleKind[i] == "library" && file ~ /\.h$/ && file !~ /_p\.h$/ && file !~ /^(tests|bench)\//)
                complain(place, "<" header "> in a public header")
            return
        }
    }
    complain(place, "<" header "> may not be seen here")
}

function addEdge(kind, from, to, place) {
    if ((kind, from, to) in edgePlace) return
    edgePlace[kind, from, to] = place
    edges[kind]++
    edgeFrom[kind, edges[kind]] = from
    edgeTo[kind, edges[kind]] = to
}

# Drops edges that lead to or come from a dead end until only those on circles are left.
function reportCircles(kind,    i, dropped, from, to, ins, outs) {
    do {
        dropped = 0
        split("", ins)
        split("", outs)
        for (i = 1; i <= edges[kind]; i++) {
            if (gone[kind, i]) continue
            outs[edgeFrom[kind, i]] = 1
            ins[edgeTo[kind, i]] = 1
        }
        for (i = 1; i <= edges[kind]; i++) {
            if (gone[kind, i] || (edgeTo[kind, i] in outs && edgeFrom[kind, i] in ins)) continue
            gone[kind, i] = 1
            dropped++
        }
    } while (dropped)
    for (i = 1; i <= edges[kind]; i++) {
        if (gone[kind, i]) continue
        from = edgeFrom[kind, i]
        to = edgeTo[kind, i]
        complain(edgePlace[kind, from, to], kind "s in a circle: " from " includes " to)
    }
}

function checkFile(file,    line, number, place) {
    if (!floorOf(file)) complain(file ":1", "lies on no floor (tools/floors.txt lists them)")
    while ((getline line < file) > 0) {
        number++
        if (line !~ /^[ \t]*#[ \t]*include/) continue
        place = file ":" number
        if (match(line, /"[^"]*"/)) checkOwn(file, substr(line, RSTART + 1, RLENGTH - 2), place)
        else if (match(line, /<[^>]*>/)) checkForeign(file, substr(line, RSTART + 1, RLENGTH - 2), place)
    }
    close(file)
}

BEGIN { readFloors() }
NF { known[$0] = 1; names[++count] = $0 }
END {
    for (i = 1; i <= count; i++) checkFile(names[i])
    reportCircles("file")
    reportCircles("folder")
    if (!faults) print "layers: " count " files, no faults"
    exit faults > 0
}
