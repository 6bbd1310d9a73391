# Writes CHANGELOG.md in the distribution's form: awk -v package=... -v maintainer=... -f changelog.awk CHANGELOG.md
# What is not released yet has the day of today.

# The point that was read, in lines of at most 76 characters.
function end_point(    words, count, i, line) {
    if (point == "")
        return
    count = split(point, words, / +/)
    line = "  *"
    for (i = 1; i <= count; ++i) {
        if (length(line) + length(words[i]) > 75) {
            print line
            line = "   "
        }
        line = line " " words[i]
    }
    print line
    point = ""
}

function end_section() {
    end_point()
    if (day == "")
        return
    if (day == "unreleased")
        day = "today"
    command = "LC_ALL=C date --utc -R --date=" day
    command | getline date
    printf "\n -- %s  %s\n", maintainer, date
}

/^## / {
    end_section()
    day = substr($3, 2, length($3) - 2)
    printf "%s (%s) unstable; urgency=medium\n\n", package, $2
}
/^- / { end_point(); point = substr($0, 3) }
/^  / { point = point " " substr($0, 3) }
END { end_section() }
