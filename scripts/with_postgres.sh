#!/usr/bin/env bash
# Runs a command beside a private PostgreSQL server and stops the server, whatever happens.
#
#   scripts/with_postgres.sh COMMAND [ARGUMENT...]
#
# The server listens on a unix socket and on loopback, on a port of its own, and keeps its files in
# a temporary folder. The command finds it through OMBRIX_POSTGRES, the head of a connection text
# ("Driver=PostgreSQL;Host=...;Port=...;Username=...;Password=..."). Where OMBRIX_POSTGRES is set
# already, that server is used and none is started.
set -euo pipefail

if [[ -n "${OMBRIX_POSTGRES:-}" ]]; then
  exec "$@"
fi

bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)
[[ -n "$bin" ]] || { echo "No PostgreSQL server is installed." >&2; exit 1; }

folder=$(mktemp -d -t ombrix_postgres.XXXXXX)
# A server does not run as root, so root hands its folder to the account that the package made.
as_owner=()
if [[ $(id -u) -eq 0 ]]; then
  chown postgres "$folder"
  chmod 755 "$folder"
  as_owner=(runuser -u postgres --)
fi

stop() {
  "${as_owner[@]}" "$bin/pg_ctl" -D "$folder/data" -m immediate -w stop >/dev/null 2>&1 || true
  rm -rf "$folder"
}
trap stop EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# Where the socket file would be, another server may listen on the same number.
port=$(python3 -c 'import socket
s = socket.socket()
s.bind(("127.0.0.1", 0))
print(s.getsockname()[1])')
password=$(python3 -c 'import secrets; print(secrets.token_hex(12))')
"${as_owner[@]}" bash -c "umask 077; printf '%s' '$password' > '$folder/password'"
"${as_owner[@]}" "$bin/initdb" -D "$folder/data" -U ombrix --pwfile="$folder/password" \
  --auth=scram-sha-256 --encoding=UTF8 --locale=C >"$folder/initdb.log" 2>&1 ||
  { cat "$folder/initdb.log" >&2; exit 1; }
# The data is gone with the run, so nothing is gained by waiting for the disk.
"${as_owner[@]}" bash -c "cat >> '$folder/data/postgresql.conf'" <<CONF
listen_addresses = '127.0.0.1'
port = $port
unix_socket_directories = '$folder'
max_connections = 100
fsync = ${OMBRIX_POSTGRES_FSYNC:-off}
synchronous_commit = ${OMBRIX_POSTGRES_FSYNC:-off}
full_page_writes = ${OMBRIX_POSTGRES_FSYNC:-off}
CONF
"${as_owner[@]}" "$bin/pg_ctl" -D "$folder/data" -l "$folder/server.log" -w start >/dev/null ||
  { cat "$folder/server.log" >&2; exit 1; }

head="Driver=PostgreSQL;Host=127.0.0.1;Port=$port"
export OMBRIX_POSTGRES="$head;Username=ombrix;Password=$password"
status=0
"$@" || status=$?
exit "$status"
