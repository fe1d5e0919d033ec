# Doxygen takes a quote for the end of a text in single backticks, but not of one in double backticks.
s/`\([^`]*'[^`]*\)`/``\1``/g
