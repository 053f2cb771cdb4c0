"""What the measurements of the logs share: a log of a million rows, the client that reads it, a clock."""

import os
import statistics
import subprocess
import time

import meter

ROWS = int(os.environ.get("CORVANTA_BENCH_ROWS", "1000000"))

# An operation every half minute for a year: few users and kinds, texts that repeat in part.
LOG = f"""
create table operatelogs(id integer primary key, user varchar, startDate datetime, type varchar, context varchar,
                         context1 varchar);
with recursive n(i) as (select 1 union all select i + 1 from n where i < {ROWS})
insert into operatelogs(user, startDate, type, context, context1)
select '1380013800' || (i % 10), strftime('%Y-%m-%dT%H:%M:%f', '2024-01-01', '+' || (i * 30) || ' seconds'),
       substr('设备分组好友地图联动设置', 1 + 2 * (i % 6), 2), '修改设备参数 camera-' || (i % 70) || ' 成功',
       '通道 ' || (i % 4) || ' 次数 ' || i
from n;
"""

# The rows as the client shows them, by the quickest means that the shell has.
SHOWN = "select id, user, replace(substr(startDate, 1, 19), 'T', ' '), type, context, context1 from operatelogs;"


def make(folder):
    database = os.path.join(folder, "dataBase.db")
    subprocess.run(["sqlite3", database], input=LOG, text=True, check=True)
    return database


def client(database, *file):
    """Milliseconds of query and export, bytes a row."""
    environment = dict(os.environ, QT_LOGGING_RULES="*=false")
    output = subprocess.run([meter.program("log_client"), database, *file], env=environment, text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True).stdout
    rows, queried, exported, memory = map(int, output.split())
    if rows != ROWS:
        raise RuntimeError(f"{rows} rows instead of {ROWS}")
    return queried, exported, memory


def shell(database, file, separator="|"):
    """Milliseconds in which the shell writes the rows as text."""
    begin = time.monotonic()
    with open(file, "wb") as output:
        subprocess.run(["sqlite3", "-separator", separator, database, SHOWN], stdout=output, check=True)
    return (time.monotonic() - begin) * 1000


def median(figures):
    meter.note("# " + " ".join(f"{figure:.0f}" for figure in figures))
    return statistics.median(figures)
