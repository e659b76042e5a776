# bash completion for ttr

_ttr() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  case $previous in
    --values | --junit | -o | --output)
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
      ;;
    --chdir | --root | --assets)
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      return
      ;;
    --size)
      mapfile -t COMPREPLY < <(compgen -W "800x480 1024x600 1280x720 1920x1080" -- "$current")
      return
      ;;
    --pass | --passes | --port)
      return
      ;;
  esac
  if [ "$COMP_CWORD" -eq 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W "resolve check diff test schema explain preview -h --help --version" -- "$current")
  elif [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W \
      "-h --help --values --size --pass --passes --assets --watch --serve --port --chdir --root --pretty --json --resolved --update --junit -o --output --format --max-warnings --color -q --quiet" -- "$current")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
  fi
}
complete -o filenames -F _ttr ttr
