"""What the pages have to say of a record, worked out anew from what the lab's report prints.

Figures are (title, value) texts; marks and cells are (name, value), in the order of reading.
"""

import collections
import datetime
import json
import math
import os
import subprocess

MOST_CELLS = 20
MOST_RANKED = 10

UTC8 = datetime.timezone(datetime.timedelta(hours=8))
METHODS = (("英文", ("english", "英文")), ("双拼中文", ("shuangpin", "双拼")),
           ("全拼中文", ("quanpin", "全拼", "拼音")), ("其他", ("",)))
METHODS_OF_EQUAL_COUNT = ("双拼中文", "英文", "全拼中文", "其他")
RATES = {"英文": 0.248, "双拼中文": 0.267, "全拼中文": 0.152, "其他": 0.152}
ALERTS = {"high_load": "高负载", "critical_load": "极高负载", "high_memory": "内存不足",
          "high_swap": "Swap 不足", "windowserver_high": "图形异常",
          "windowserver_crash": "图形崩溃"}


def record(desktop, tab, now, period=None):
    """What the report tells a page of the desktop's store."""
    options = ["--period", period] if period else []
    return json.loads(subprocess.check_output(
        [os.environ["QUILLBROOK_LAB"], "report", "--data", desktop.data, "--tab", tab,
         "--now", str(now), "--zone", "0", *options], text=True))


def agree(shown, expected):
    """Whether lists of (name, value) say the same; numbers may differ in their last digits."""
    return len(shown) == len(expected) and all(
        name == wanted and (value == number if isinstance(number, str) else
                            math.isclose(float(value), number, rel_tol=1e-9, abs_tol=1e-12))
        for (name, value), (wanted, number) in zip(shown, expected))


def _time(seconds, form):
    return datetime.datetime.fromtimestamp(seconds, UTC8).strftime(form)


def _duration(minutes):
    minutes = int(minutes)
    return "%dh%dm" % divmod(minutes, 60) if minutes >= 60 else "%dm" % minutes


def _cell_duration(seconds):
    return "<1m" if seconds < 60 else _duration(seconds / 60)


def _counted(number):
    if number >= 10000:
        return "%.1f 万" % (number / 10000)
    return "{:,}".format(number) if number >= 1000 else str(number)


# Today and Past

def today_figures(data):
    overview = data["overview"]
    first = overview["firstActivity"]
    return [("%d 个会话" % overview["sessionCount"], _time(first, "%H:%M") if first else "--:--"),
            ("单次最长 " + _duration(overview["longestSessionMinutes"]),
             _duration(overview["totalActiveHours"] * 60)),
            ("切换 %d 次" % overview["appSwitchCount"], "%d 个" % len(data["appUsage"])),
            ("今日键盘输入", _counted(data["totalKeylogKeystrokes"]))]


def timeline(data):
    return [(app["appName"], app["seconds"]) for entry in data["hourlyTimeline"]
            for app in entry["apps"] if app["seconds"] > 0]


def past_figures(data):
    overview = data["historyOverview"]
    return [("活跃时长", "%.1f h" % overview["totalActiveHours"]),
            ("活跃应用", "%d 个" % overview["activeAppCount"]),
            ("切换次数", str(overview["appSwitchCount"])),
            ("开关机", "%d 次" % overview["bootCount"])]


def app_cells(data):
    return [(app["appName"], _cell_duration(app["totalSeconds"]))
            for app in data["appUsage"][:MOST_CELLS]]


# Habit

def category_cells(data):
    return [(usage["label"], "%.1fh" % (usage["totalSeconds"] / 3600))
            for usage in data["categoryUsage"]]


def category_bars(data):
    return [(usage["label"], usage["totalSeconds"] / 3600) for usage in data["categoryUsage"]]


def category_trend(data):
    sums = collections.Counter()
    for point in data["categoryTrend"]:
        sums[point["date"]] += point["hours"]
    return [("%s %s" % (point["label"], _time(point["date"], "%m-%d")),
             point["hours"] / sums[point["date"]] if sums[point["date"]] > 0 else 0)
            for key in sorted({point["category"] for point in data["categoryTrend"]})
            for point in data["categoryTrend"] if point["category"] == key]


# Focus

def _focus_ratio(row):
    available = row["activeDays"] * 3600
    return row["activeSec"] / available if available > 0 else 0


def focus_figures(data):
    active = [row for row in data["focusHours"] if row["activeDays"] >= 1]
    used = sum(row["activeSec"] for row in active)
    available = sum(row["activeDays"] * 3600 for row in active)
    idle = sum(max(0, row["activeDays"] * 3600 - row["activeSec"]) for row in active)
    best = max(data["focusHours"], key=_focus_ratio, default=None)
    return [("活跃", "%d分钟" % (used / 60)), ("空闲", "%d分钟" % (idle / 60)),
            ("专注度", "%.0f%%" % (used / available * 100 if available else 0)),
            ("最佳时段", "%02d:00" % best["hour"] if best else "--:--")]


def focus_hours(data):
    return [("%02d:00" % row["hour"], min(100, _focus_ratio(row) * 100))
            for row in data["focusHours"]]


def focus_lengths(data):
    return [(bucket["label"], bucket["count"]) for bucket in data["durationBuckets"]]


def focus_days(data):
    series = (("<5分钟", "avgUnder5"), ("5-10分钟", "avg5to10"), (">10分钟", "avgOver10"))
    return [("%s %s" % (label, row["date"]), row[field])
            for label, field in series for row in data["dailyAvgSessions"]]


# Tokens

def tokens_figures(data):
    tokens = data["totalKeylogTokens"]
    text = "%.1f万" % (tokens / 10000) if tokens >= 10000 else _thousands(tokens)
    hours = sum(1 for row in data["keylogHourly"] if row["keystrokes"] >= 1)
    speed = "%.1f/min" % data["tpm"] if data["totalActiveKeylogMinutes"] >= 1 else "--"
    return [("击键", str(data["totalKeylogKeystrokes"])), ("Tokens", text), ("TPM", speed),
            ("会话", "%d h" % hours)]


def _thousands(tokens):
    return "%.1fk" % (tokens / 1000) if tokens >= 1000 else "%.0f" % tokens


def key_bars(data):
    return [(str(row["hour"]), row["keystrokes"]) for row in data["keylogHourly"]]


def _uses(data):
    """Each application's keys in each hour, as (application, method, keystrokes)."""
    for row in data["keylogHourly"]:
        for app, use in row["apps"].items():
            method = next(label for label, parts in METHODS
                          if any(part in use["inputMethod"].lower() for part in parts))
            yield app, method, use["keystrokes"]


def method_sectors(data):
    counts = collections.Counter()
    for _app, method, keystrokes in _uses(data):
        counts[method] += keystrokes
    return sorted(((label, counts[label]) for label in METHODS_OF_EQUAL_COUNT if counts[label]),
                  key=lambda sector: -sector[1])


def app_tokens(data):
    tokens = collections.Counter()
    for app, method, keystrokes in _uses(data):
        tokens[app] += keystrokes * RATES[method]
    return tokens.most_common(MOST_RANKED)


# Alerts

def alert_days(data):
    """The days, newest first, with their totals."""
    days = collections.Counter(_time(alert["timestamp"], "%m-%d") for alert in data["alerts"])
    return [(day, "%d 次告警" % days[day]) for day in sorted(days, reverse=True)]


def alert_dots(data, day):
    """In the order of their names, as that of the kinds of one severity is open."""
    times = [(ALERTS[alert["alertType"]], datetime.datetime.fromtimestamp(alert["timestamp"], UTC8))
             for alert in data["alerts"] if _time(alert["timestamp"], "%m-%d") == day]
    return sorted(("%s %s" % (label, time.strftime("%H:%M")),
                   (time.hour * 3600 + time.minute * 60 + time.second) / 86400)
                  for label, time in times)


# Sessions and Idles

SOURCES = {1: "HID超时", 2: "睡眠", 3: "锁屏", 4: "进程退出"}


def _day(seconds, now):
    """On a desktop whose clock is that of UTC."""
    days = now // 86400 - seconds // 86400
    return {0: "今天", 1: "昨天"}.get(days) or _time(seconds, "%m/%d")


def _length(seconds):
    if seconds < 60:
        return "%.0f秒" % seconds
    return "%.1f分钟" % (seconds / 60) if seconds < 3600 else "%.2f小时" % (seconds / 3600)


def _running_first(rows):
    return sorted(rows, key=lambda row: (row["endedAt"] is not None, -row["startedAt"]))


def _from_to(row, now):
    end = _time(row["endedAt"], "%H:%M:%S") if row["endedAt"] is not None else "--:--:--"
    return _day(row["startedAt"], now), _time(row["startedAt"], "%H:%M:%S"), end


def session_rows(data, now):
    rows = []
    for row in _running_first(data["recentSessions"]):
        day, start, end = _from_to(row, now)
        rows.append([day, row["appName"], start, end, _length(row["durationSec"] or 0),
                     row["closeType"], row["status"]])
    return rows


def idle_rows(data, now):
    rows = []
    for row in _running_first(data["recentIdles"]):
        day, start, end = _from_to(row, now)
        rows.append([str(row["rowId"]), day, start, end, _length(row["durationSec"] or 0),
                     SOURCES.get(row["sourceType"], "未知"),
                     "进行中" if row["endedAt"] is None else "已结束"])
    return rows


# Future

def life_figures(now, birth_year):
    """On a desktop whose clock is that of UTC, on the day of `now`."""
    day = datetime.datetime.fromtimestamp(now, datetime.timezone.utc).date()
    start, end = datetime.date(day.year, 1, 1), datetime.date(day.year + 1, 1, 1)
    passed = (day - start).days + 1
    share = min(1, (day.year - birth_year) / 84.11)
    return [("生命已逝/天", str((day - datetime.date(birth_year, 1, 1)).days)),
            ("今年已过", str(passed)), ("人生进度", "%.1f%%" % (share * 100)),
            ("当年进度", "%.1f%%" % (passed / (end - start).days * 100))]


def life_cells(year, birth_year):
    """The names of all cells."""
    names = []
    for index in range(108):
        lived = index - (birth_year - 1984) % 12 + 1
        if lived < 1:
            names.append("出生前")
            continue
        parts = ["%d 岁" % lived]
        if lived == 1:
            parts.append("出生")
        if lived == 84:
            parts.append("人均寿命")
        age = year - birth_year
        parts.append("恩赐" if lived > 84 else "现在" if lived == age
                     else "已过" if lived < age else "未来")
        if lived in (41, 47, 99):
            parts.append("纪念")
        names.append("，".join(parts))
    return names
