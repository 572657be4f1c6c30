#!/usr/bin/env bash
# tzhost's manual pages and completions as their readers take them: PagesTest.sh FOLDER TZHOST. Shells and man(1) that
# are not installed are passed over.
set -u
pages=$1 tzhost=$2
failures=0
fail() {
    printf '%s\n' "$*"
    failures=$((failures + 1))
}

mapfile -t commands < <("$tzhost" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z-]*\) .*/\1/p')
((${#commands[@]} > 9)) || fail "tzhost --help lists ${#commands[@]} commands"

# Every option of --help has its place in the page.
if type man >/dev/null 2>&1; then
    for page in "$pages"/man/*.1.gz; do
        text=$(MANWIDTH=120 LC_ALL=C.UTF-8 man --warnings -l "$page" 2>&1 >/dev/null)
        [[ -z $text ]] || fail "$page: $text"
    done
    for command in "${commands[@]}"; do
        text=$(MANWIDTH=120 man -l "$pages/man/tzhost-$command.1.gz")
        for option in $("$tzhost" "$command" --help | grep -oE '^  [^ ]*--[a-z-]+' | grep -oE -- '--[a-z-]+'); do
            grep -qE -- "^ +(-.*)?$option( |$)" <<<"$text" || fail "tzhost-$command.1 has no $option"
        done
    done
fi

# What bash offers for a line that has been typed so far, and some of what must be among it, or nothing.
. "$pages/bash/tzhost"
offers() {
    read -ra COMP_WORDS <<<"$1"
    [[ $1 != *' ' ]] || COMP_WORDS+=('')
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMPREPLY=()
    _tzhost 2>/dev/null
    printf '%s ' "${COMPREPLY[@]}"
}
cd "$pages" || exit
while IFS='|' read -r typed expected; do
    [[ $(offers "$typed") == "$expected" ]] || fail "bash: \"$typed\" offers \"$(offers "$typed")\", not \"$expected\""
done <<END
tzhost |${commands[*]} 
tzhost im|import image-info 
tzhost --module imp im|import image-info 
tzhost import --no|--normalize --notes 
tzhost preview a.svg --si|--size 
tzhost export --no| 
tzhost import a.svg --q|--quiet 
tzhost import a.svg -o z|zsh 
tzhost import a.svg --log z| 
tzhost import | 
END

if type fish >/dev/null 2>&1; then
    [[ $(fish -c "source fish/tzhost.fish; complete -C 'tzhost im'" | cut -f 1) == $'image-info\nimport' ]] || fail "fish: commands"
    [[ $(fish -c "source fish/tzhost.fish; complete -C 'tzhost import --no'" | cut -f 1) == $'--normalize\n--notes' ]] ||
        fail "fish: options"
fi
if type zsh >/dev/null 2>&1; then
    # zsh completes in a terminal only: one of its own is typed into.
    seen=$(zsh -f -c '
        zmodload zsh/zpty
        zpty shell zsh -f -i
        zpty -w shell "PS1=; fpath=($PWD/zsh \$fpath); autoload -U compinit; compinit -u -D"
        sleep 1
        zpty -w -n shell "tzhost im"$'"'\t\t'"'
        sleep 1
        zpty -w shell $'"'\x15'"'"tzhost import --no"$'"'\t\t'"'
        sleep 1
        zpty -r -t shell all "*" ; while zpty -r -t shell line; do all+=$line; done; print -r -- $all')
    for word in image-info --normalize --notes; do
        grep -q -- "$word" <<<"$seen" || fail "zsh: no $word in: $seen"
    done
fi
((failures == 0)) && echo "${#commands[@]} commands: all as expected"
exit $((failures > 0))
