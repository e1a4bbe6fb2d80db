# Sourced by the other scripts: one quiet progress line a step, the log only on failure.

step_log=$(mktemp)
trap 'rm -f "$step_log"' EXIT

# step NAME COMMAND...: runs the command; its output shows only when it fails, and ends the script.
step() {
  local name=$1 began=$SECONDS
  shift
  printf '%-58s ' "$name ..."
  if "$@" >"$step_log" 2>&1 </dev/null; then
    printf 'ok  %3ds\n' $((SECONDS - began))
  else
    printf 'FAILED\n'
    tail -n 80 "$step_log"
    exit 1
  fi
}
