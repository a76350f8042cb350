# Prints a CSV file as a table.

readonly tableRows=60

# printTable FILE: the hidden sort keys (columns ending in 2) are not shown, rows are cut to the
# terminal's width.
printTable() {
    local -a captions widths cells
    local row column limit count=0 line
    local separator=$'\x1f'
    limit="$(terminalWidth)"
    mapfile -t rows < <(splitCsv "$1")
    [ ${#rows[@]} -gt 0 ] || { echo '(the list is empty)'; return; }

    IFS="$separator" read -r -a captions <<<"${rows[0]}"
    for row in "${rows[@]:0:tableRows+1}"; do
        IFS="$separator" read -r -a cells <<<"$row"
        for column in "${!captions[@]}"; do
            line="${cells[column]:-}"
            [ ${#line} -le "${widths[column]:-0}" ] || widths[column]=${#line}
        done
    done
    for row in "${rows[@]:0:tableRows+1}"; do
        IFS="$separator" read -r -a cells <<<"$row"
        line=
        for column in "${!captions[@]}"; do
            [[ "${captions[column]}" != *2 ]] || continue
            line+="$(padded "${cells[column]:-}" "${widths[column]}" "${captions[column]}")  "
        done
        line="${line:0:limit}"
        printf '%s\n' "${line%"${line##*[! ]}"}"
        [ $((count++)) -gt 0 ] || printf '%*s\n' "$limit" '' | tr ' ' '-'
    done
    count=$((${#rows[@]} - 1))
    [ "$count" -le "$tableRows" ] || echo "... and $((count - tableRows)) more"
    echo "$count rows"
}

# padded TEXT WIDTH CAPTION: sizes to the right, everything else to the left (printf's own padding
# counts bytes).
padded() {
    local blanks
    printf -v blanks '%*s' $(($2 - ${#1})) ''
    if [ "$3" = siz ]; then printf '%s%s' "$blanks" "$1"; else printf '%s%s' "$1" "$blanks"; fi
}

terminalWidth() {
    if [ -t 1 ] && command -v tput >/dev/null; then tput cols; else echo "${COLUMNS:-120}"; fi
}

# One line a record, fields separated by the unit separator.
splitCsv() {
    sed '1s/^\xef\xbb\xbf//' "$1" | tr -d '\r' | awk '
        {
            for (i = 1; i <= length($0); i++) {
                c = substr($0, i, 1)
                if (quoted && c == "\"" && substr($0, i + 1, 1) == "\"") { out = out c; i++ }
                else if (c == "\"") quoted = !quoted
                else if (c == "," && !quoted) out = out "\037"
                else out = out c
            }
            if (quoted) { out = out " "; next }
            print out
            out = ""
        }'
}
