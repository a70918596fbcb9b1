# Counts the values of a column over the distinct lines that hold a text: -v needle=TEXT -v column=NUMBER
BEGIN { FS = "\t"; RS = "\r\n" }
index($0, needle) && !seen[$0]++ && $column != "" {
    if (!counts[$column]++) values[++known] = $column
}
END {
    for (i = 1; i <= known; i++) print values[i] "\t" counts[values[i]]
}
