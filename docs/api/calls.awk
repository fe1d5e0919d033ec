# Where a page has a line with README.md alone, this prints the C++ of README.md instead.
$0 == "/// README.md" {
    while (("sed -n '/^```cpp$/,/^```$/{//!p}' README.md" | getline line) > 0) print "/// " line
    next
}
{ print }
