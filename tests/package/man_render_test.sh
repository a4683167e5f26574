#!/usr/bin/env bash
# Renders the man pages given as arguments and fails on any warning of groff or man.
set -euo pipefail
status=0
for page in "$@"; do
  warnings=$(groff -man -Tutf8 -ww -z "$page" 2>&1 | sed 's/^/groff: /')
  warnings+=$'\n'
  if command -v man >/dev/null; then
    warnings+=$(MANWIDTH=80 man --warnings -l "$page" 2>&1 >/dev/null | sed 's/^/man: /')
  fi
  if [ -n "${warnings//$'\n'/}" ]; then
    printf '%s:\n%s\n' "$page" "$warnings"
    status=1
  fi
done
exit $status
