# Doxygen makes a dash of two hyphens.
/^#/!s/ --/ \\--/g
