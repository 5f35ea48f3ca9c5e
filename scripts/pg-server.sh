#!/usr/bin/env bash
# pg-server.sh start DIR | stop DIR | kill DIR | restart DIR
# A throwaway PostgreSQL server for the tests: a fresh cluster in DIR, on a
# free loopback port, run by an unprivileged user (the server refuses root;
# DIR's parent must be reachable by that user).
# `start` prints the connection string to use; `stop` shuts it down and
# removes DIR. `kill` stops the server at once, as a crash would, keeping its
# data; `restart` starts it again on the same port (a committed transaction
# survives a kill: commits wait for their log to be written).
# Fails with the reason when the server cannot be started.
# Every user is trusted (the tests' user varnel has no password), except the
# role varnel_pw, which must give its password, "varnel-pw-secret": the tests
# of passwords taken from libpq's environment log in as it.
set -euo pipefail
action=${1:?start or stop}
dir=${2:?directory}

pg_bin() {
  local found
  found=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)
  [ -n "$found" ] || { echo "pg-server: PostgreSQL server binaries not found (package postgresql)" >&2; exit 1; }
  echo "$found"
}

as_owner() {
  if [ "$(id -u)" -eq 0 ]; then
    runuser -u postgres -- "$@"
  else
    "$@"
  fi
}

free_port() {
  python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1",0)); print(s.getsockname()[1]); s.close()'
}

run_server() {
  local bin=$1 dir=$2 port=$3
  as_owner "$bin/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w -t 30 \
    -o "-c listen_addresses=127.0.0.1 -p $port -k $dir -c fsync=off -c full_page_writes=off" \
    start >/dev/null \
    || { echo "pg-server: the server did not start:" >&2; cat "$dir/server.log" >&2; exit 1; }
}

case "$action" in
  start)
    bin=$(pg_bin)
    mkdir -p "$dir"
    [ "$(id -u)" -eq 0 ] && chown postgres: "$dir"
    chmod 700 "$dir"
    as_owner "$bin/initdb" -D "$dir/data" -A trust -U varnel --no-sync -E UTF8 --locale=C.UTF-8 >"$dir/initdb.log" 2>&1 \
      || { echo "pg-server: initdb failed:" >&2; cat "$dir/initdb.log" >&2; exit 1; }
    # The first matching line decides: varnel_pw's come before the trust lines.
    as_owner sed -i '1i host all varnel_pw 127.0.0.1/32 scram-sha-256\nlocal all varnel_pw scram-sha-256' \
      "$dir/data/pg_hba.conf"
    port=$(free_port)
    run_server "$bin" "$dir" "$port"
    as_owner "$bin/createdb" -h 127.0.0.1 -p "$port" -U varnel varnel_test \
      || { echo "pg-server: createdb failed" >&2; exit 1; }
    as_owner "$bin/psql" -h 127.0.0.1 -p "$port" -U varnel -d varnel_test -q -v ON_ERROR_STOP=1 \
      -c "CREATE ROLE varnel_pw LOGIN PASSWORD 'varnel-pw-secret'" \
      -c "GRANT ALL ON SCHEMA public TO varnel_pw" >/dev/null \
      || { echo "pg-server: the password role could not be created" >&2; exit 1; }
    echo "$port" >"$dir/port"
    echo "Provider=PostgreSQL;Host=127.0.0.1;Port=$port;Database=varnel_test;User ID=varnel;Password="
    ;;
  stop)
    bin=$(pg_bin)
    if [ -d "$dir/data" ]; then
      as_owner "$bin/pg_ctl" -D "$dir/data" -m immediate -w stop >/dev/null 2>&1 || true
    fi
    rm -rf "$dir"
    ;;
  kill)
    bin=$(pg_bin)
    as_owner "$bin/pg_ctl" -D "$dir/data" -m immediate -w stop >/dev/null
    ;;
  restart)
    bin=$(pg_bin)
    run_server "$bin" "$dir" "$(cat "$dir/port")"
    ;;
  *)
    echo "usage: pg-server.sh start|stop|kill|restart DIR" >&2
    exit 2
    ;;
esac
