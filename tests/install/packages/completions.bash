# Every option that --help lists is completed by bash, and the words that options take.
set -euo pipefail

fail() { echo "bash completion: $*" >&2; exit 1; }

# complete_words WORD...: what is offered for the last of the words.
complete_words() {
  COMP_WORDS=("$@")
  COMP_CWORD=$(($# - 1))
  COMPREPLY=()
  "_$1"
}

# The spellings at the start of the lines of a help.
listed_options() {
  "$@" --help | grep -E '^  +-' | sed -E 's/\{false\}//g; s/^ +//; s/  .*//' |
    grep -oE -- '(^|[ ,])--?[A-Za-z][A-Za-z-]*' | tr -d ' ,' | sort -u
}

# compopt works only where the shell itself completes.
compopt() { :; }

options=0
check_options() {
  complete_words "$@" -
  local option
  while read -r option; do
    [[ " ${COMPREPLY[*]} " == *" $option "* ]] || fail "$* does not complete $option"
    options=$((options + 1))
  done < <(listed_options "$@")
}

for program in jqstitch jqscope; do
  # shellcheck disable=SC1090
  . "/usr/share/bash-completion/completions/$program"
  complete -p "$program" >/dev/null
  check_options "$program"
done
commands=$(jqstitch --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
for command in $commands; do
  complete_words jqstitch "${command:0:2}"
  [[ " ${COMPREPLY[*]} " == *" $command "* ]] || fail "jqstitch does not complete $command"
  check_options jqstitch "$command"
done
[ "$options" -gt 100 ] || fail "only $options options were found in the help"

complete_words jqstitch live --doubtful ''
[ "${COMPREPLY[*]}" = "keep drop" ] || fail "--doubtful offers '${COMPREPLY[*]}'"
complete_words jqstitch live --output mos
[ ${#COMPREPLY[@]} -eq 0 ] || fail "--output offers '${COMPREPLY[*]}', not files"
complete_words jqscope --overlap-mode ''
[ "${COMPREPLY[*]}" = "0 1" ] || fail "--overlap-mode offers '${COMPREPLY[*]}'"
echo "bash completes $options options"
