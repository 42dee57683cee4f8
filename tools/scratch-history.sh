# A small history with fixed names and dates, for pictures and tests. Sourced; make_history makes it in the current, empty folder,
# which becomes the home, too. The user's configuration plays no part.
export LC_ALL=C.UTF-8 TZ=UTC HOME=$PWD GIT_CONFIG_NOSYSTEM=1 GIT_CONFIG_GLOBAL=/dev/null
unset GIT_DIR GIT_WORK_TREE GIT_INDEX_FILE NO_COLOR XDG_CACHE_HOME XDG_CONFIG_HOME

# as AUTHOR COMMAND...: runs git as this person, an hour later than the time before.
hours=0
as() {
    local author=$1 date
    hours=$((hours + 1))
    date=$(printf '2026-03-%02dT%02d:00:00+0000' $((2 + hours / 8)) $((9 + hours % 8)))
    GIT_AUTHOR_NAME=$author GIT_AUTHOR_EMAIL=$author@example.org GIT_AUTHOR_DATE=$date \
        GIT_COMMITTER_NAME=$author GIT_COMMITTER_EMAIL=$author@example.org GIT_COMMITTER_DATE=$date git "${@:2}" >/dev/null
}
commit() { # AUTHOR SUBJECT [FILE LINE]: adds the line to the file
    if [ $# -gt 2 ]; then
        printf '%s\n' "$4" >>"$3"
        git add "$3"
    fi
    as "$1" commit --quiet --allow-empty --message "$2"
}
merge() { # AUTHOR SUBJECT BRANCH...
    as "$1" merge --quiet --no-ff --message "$2" "${@:3}"
}

make_history() {
    git init --quiet --initial-branch main
    commit Ada "Begin" main.c "int main(void) { return 0; }"
    commit Ada "Read a file by lines" lines.c "char* line(FILE* file);"
    git tag v1.0
    git checkout --quiet -b parser
    commit Grace "Split a line into words" words.c "char** words(char* line);"
    git checkout --quiet -b quoting
    commit Edsger "Words in quotes are one word" words.c "char* quoted(char* text);"
    git checkout --quiet main
    commit Ada "Name the file in every message" main.c "void complain(char* file, char* text);"
    git checkout --quiet parser
    commit Grace "Numbers are words, too" numbers.c "int number(char* word);"
    merge Grace "Merge the quoting" quoting
    git checkout --quiet main
    merge Ada "Merge the parser" parser
    git tag v1.1
    git checkout --quiet -b watch
    commit Edsger "Look again when a file changes" lines.c "int has_changed(FILE* file);"
    git checkout --quiet main
    commit Ada "Say what version this is" main.c "char* version;"
}
