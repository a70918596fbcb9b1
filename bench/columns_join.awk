# Prints the lines of the second file whose column has a value that the first file has in it too: -v column=NUMBER
BEGIN { FS = "\t"; RS = "\r\n" }
NR == FNR { values[$column]; next }
$column in values
