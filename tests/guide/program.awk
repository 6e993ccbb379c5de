# Makes a program of a page of the guide, from its C++ examples:
#   ```cpp         a block of main(); it sees those ahead of it and may hide their names
#   ```cpp global  what stands outside of functions
#   <!--cpp        the same as the first, for what the examples need and a reader doesn't
# A comment that begins with a number, a quoted text, true or false is what the expression in front of
# it gives, which the program checks.

function is_value(comment) { return comment ~ /^(-?[0-9]|"|true|false)/ }

function escaped(text) {
    gsub(/\\/, "\\\\\\\\", text)
    gsub(/"/, "\\\\\"", text)
    return text
}

# Adds the check of a line like "T name = expression;   // value" or "expression;   // value".
function checked(line,    at, code, comment, name) {
    at = match(line, /;[ ]+\/\/ /)
    if (at == 0) return line
    code = substr(line, 1, at - 1)
    comment = substr(line, at + RLENGTH)
    if (!is_value(comment) || code ~ /(for|if|while|case|return)[ (]/ || code ~ /[^ ] *;/) return line
    if (code ~ /^[ ]*([A-Za-z_:<>*& ]+ [*&]?)?[A-Za-z_]+ = /) {
        name = code
        sub(/ = .*/, "", name)
        sub(/.*[ *&]/, "", name)
        return code "; shows(" name ", \"" escaped(comment) "\", " NR ");"
    }
    if (code ~ /^[ ]*[A-Za-z_:]+ [A-Za-z_]+\(/) {  # T name(arguments)
        name = code
        sub(/^[ ]*[A-Za-z_:]+ /, "", name)
        sub(/\(.*/, "", name)
        return code "; shows(" name ", \"" escaped(comment) "\", " NR ");"
    }
    return "shows(" code ", \"" escaped(comment) "\", " NR ");"
}

/^(```cpp|<!--cpp)$/ { inside = 1; depth++; body = body "{\n"; next }
/^```cpp global$/ { outside = 1; next }
/^(```|-->)$/ { inside = outside = 0; next }
outside { top = top $0 "\n" }
inside { body = body "#line " NR " \"" FILENAME "\"\n" checked($0) "\n" }

END {
    print "#include \"tests/guide/Guide.h\"\n" top
    print "void runPage(int argc, char **argv) {\n(void)argc; (void)argv;\n" body
    while (depth-- > 0) print "}"
    print "}"
}
