# Completion of zlibvideo for bash. Each completion runs the program that is typed, and reads
# commands, options and formats from its help.

# The help of the program $1, or of its command $2.
_zlibvideo_help() {
  "${1/#~/$HOME}" ${2:+"$2"} --help 2>/dev/null
}

_zlibvideo_commands() {
  _zlibvideo_help "$1" | sed -n '/^Subcommands:/,/^$/s/^  \([a-z][a-z-]*\) .*/\1/p'
}

_zlibvideo_options() {
  _zlibvideo_help "$@" | sed -n 's/^  \(-[a-z],\)\{0,1\}\(--[a-z0-9-]*\).*/\2/p'
}

_zlibvideo_formats() {
  _zlibvideo_help "$1" decode | sed -n 's/^ *--format \([a-z0-9|]*\).*/\1/p' | tr '|' ' '
}

# Files that begin with $1 and have one of the extensions behind it, and folders.
_zlibvideo_files() {
  local IFS=$'\n' current=$1 extension
  shift
  compopt -o filenames 2>/dev/null
  COMPREPLY=($(for extension; do compgen -f -X "!*.$extension" -- "$current"; done
    compgen -d -- "$current"))
}

_zlibvideo_words() {
  COMPREPLY=($(compgen -W "$2" -- "$1"))
}

_zlibvideo() {
  local program=${COMP_WORDS[0]} command=
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  COMPREPLY=()
  ((COMP_CWORD > 1)) && command=${COMP_WORDS[1]}

  case $previous in
    --format) _zlibvideo_words "$current" "$(_zlibvideo_formats "$program")" ;;
    --codec | --passes) _zlibvideo_words "$current" "1 2" ;;
    --block) _zlibvideo_words "$current" "16x16 32x32 64x64 128x128 160x64 256x256" ;;
    --level) _zlibvideo_words "$current" "0 1 2 3 4 5 6 7 8 9" ;;
    --fps) _zlibvideo_words "$current" "5 10 25 30" ;;
    --verify) _zlibvideo_files "$current" "hashes" ;;
    # No reply: bash completes file names; numbers are typed.
    -o | --output | --html | --picture-limit | --from | --to | --key-every | --renew | --size | -j | --jobs) ;;
    *)
      if [[ $current == -?* ]]; then
        _zlibvideo_words "$current" "$(_zlibvideo_options "$program" "$command")"
      elif [[ -z $command ]]; then
        _zlibvideo_words "$current" "$(_zlibvideo_commands "$program") $(_zlibvideo_options "$program")"
      elif [[ $command == record ]]; then
        _zlibvideo_files "$current" png y4m bgra raw
      else
        _zlibvideo_files "$current" "zvm"
      fi
      ;;
  esac
}

complete -o bashdefault -o default -F _zlibvideo zlibvideo
