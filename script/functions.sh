# Functions of several scripts.

# fail WORD...: ends the script with a message.
fail() {
  echo "script/${0##*/}: $*" >&2
  exit 1
}

# quietly COMMAND...: shows the output of the command only if it fails, and then ends the script.
quietly() {
  local log
  log=$(mktemp)
  "$@" >"$log" 2>&1 </dev/null || { tail -n 100 "$log" >&2; rm "$log"; fail "$* failed"; }
  rm "$log"
}
