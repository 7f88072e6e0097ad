# Completion of zlibvideo for bash.

_zlibvideo_options() {
  case $1 in
    decode)
      echo "--help --output --format --fps --y4m-8bit --from --to --verify --quiet"
      ;;
    record)
      echo "--help --output --codec --block --key-every --reduced --passes --renew --level --quiet"
      ;;
    info)
      echo "--help --json --map --html --picture-limit --quiet"
      ;;
    *)
      echo "--help --version"
      ;;
  esac
}

# What the help of the program $1 names as formats.
_zlibvideo_formats() {
  "${1/#~/$HOME}" decode --help 2>/dev/null | sed -n 's/^ *--format \([a-z0-9|]*\).*/\1/p' |
    tr '|' ' '
}

# Files with the extension $2 that begin with $1, and folders.
_zlibvideo_files() {
  local IFS=$'\n'
  compopt -o filenames 2>/dev/null
  COMPREPLY=($(compgen -f -X "!*.$2" -- "$1"; compgen -d -- "$1"))
}

_zlibvideo_words() {
  COMPREPLY=($(compgen -W "$2" -- "$1"))
}

_zlibvideo() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=
  COMPREPLY=()
  ((COMP_CWORD > 1)) && command=${COMP_WORDS[1]}

  case $previous in
    --format) _zlibvideo_words "$current" "$(_zlibvideo_formats "${COMP_WORDS[0]}")" ;;
    --codec | --passes) _zlibvideo_words "$current" "1 2" ;;
    --block) _zlibvideo_words "$current" "16x16 32x32 64x64 128x128 256x256" ;;
    --level) _zlibvideo_words "$current" "0 1 2 3 4 5 6 7 8 9" ;;
    --fps) _zlibvideo_words "$current" "5 10 25 30" ;;
    --verify) _zlibvideo_files "$current" "hashes" ;;
    # No reply: bash completes file names; numbers are typed.
    -o | --output | --html | --picture-limit | --from | --to | --key-every | --renew) ;;
    *)
      if [[ $current == -?* ]]; then
        _zlibvideo_words "$current" "$(_zlibvideo_options "$command")"
      elif [[ -z $command ]]; then
        _zlibvideo_words "$current" "decode record info --help --version"
      elif [[ $command == record ]]; then
        _zlibvideo_files "$current" "png"
      else
        _zlibvideo_files "$current" "zvm"
      fi
      ;;
  esac
}

complete -o bashdefault -o default -F _zlibvideo zlibvideo
