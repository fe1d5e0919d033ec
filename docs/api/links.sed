# Doxygen finds the page of another document, but not a heading in it.
s/\(([a-z-]*\.md\)#[a-z-]*)/\1)/g
# It shows code in a heading as it is written, and makes a dash of two hyphens.
/^#.*`/{ s/`//g; s/--/\\--/g; s/</\\</g; s/>/\\>/g; }
# README.md is not on the site; its code is on the first page.
s/\[[^]]*\](\.\.\/README\.md[^)]*)/@ref index "The first page"/
