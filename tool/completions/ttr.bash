# bash completion for ttr

_ttr() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  case $previous in
    --values | -o | --output)
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
      ;;
    --chdir | --root)
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      return
      ;;
    --size)
      mapfile -t COMPREPLY < <(compgen -W "800x480 1024x600 1280x720 1920x1080" -- "$current")
      return
      ;;
    --pass)
      return
      ;;
  esac
  if [ "$COMP_CWORD" -eq 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W "resolve -h --help --version" -- "$current")
  elif [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W \
      "-h --help --values --size --pass --chdir --root --pretty -o --output" -- "$current")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
  fi
}
complete -o filenames -F _ttr ttr
