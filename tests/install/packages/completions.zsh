# Every option that --help lists is completed by zsh. Completion needs a shell with a
# terminal: one is started on a pseudo-terminal, and tells what it would offer.
emulate -L zsh
setopt err_exit no_unset pipe_fail
zmodload zsh/zpty

fail() { print -u2 "zsh completion: $*"; exit 1 }

inner=$(mktemp)
cat >$inner <<'SHELL'
PROMPT=
unsetopt beep
autoload -Uz compinit
compinit -u -D
# Instead of being shown, what is offered is told, a line each. Calls that fill arrays belong
# to the completion system itself.
compadd() {
  if [[ " ${(@)argv[1,(i)--]} " == *' -'[OAD]' '* ]]; then
    builtin compadd "$@"
    return
  fi
  local -a offered
  builtin compadd -A offered "$@"
  (($#offered)) && print -rl -- offered:${^offered}
  return 1
}
zle-told() { zle complete-word; print told; zle kill-whole-line }
zle -N zle-told
bindkey '^I' zle-told
print ready
SHELL
zpty shell zsh -f -i
zpty -w shell "source $inner"
zpty -r shell said '*ready*'

# offered WORDS: sets `words` to what is offered behind them.
offered() {
  zpty -w -n shell "$*"$'\t'
  local said line
  zpty -r shell said $'*told\r*'
  words=()
  for line in ${(f)said}; do
    [[ $line == *offered:* ]] && words+=(${${line##*offered:}%%$'\r'*})
  done
}

checked=0
check_options() {
  local option
  offered "$* -"
  for option in $("$@" --help | grep -E '^  +-' | sed -E 's/\{false\}//g; s/^ +//; s/  .*//' |
      grep -oE -- '(^|[ ,])--?[A-Za-z][A-Za-z-]*' | tr -d ' ,' | sort -u); do
    (($words[(Ie)$option])) || fail "$* does not complete $option"
    ((++checked))
  done
}

check_options jqstitch
check_options jqscope
for command in $(jqstitch --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p'); do
  offered "jqstitch ${command[1,2]}"
  (($words[(Ie)$command])) || fail "jqstitch does not complete $command"
  check_options jqstitch $command
done
((checked > 100)) || fail "only $checked options were found in the help"

offered 'jqstitch live --doubtful '
[[ "$words" == 'keep drop' ]] || fail "--doubtful offers '$words'"
rm $inner
print "zsh completes $checked options"
