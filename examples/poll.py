#!/usr/bin/env python3
"""Polls a screen's programmes and schedules the first one on weekday mornings, as a Python
caller of guidescreen_codec does: the device's GET_ALL_PROGRAMMES answer is read into a record
with room for 16 programmes, going on past values that cannot be converted, what the record
could not take is printed, and the request of an ADD_TIMER_PROGRAMMEPLAN plan is written.

usage: poll.py [ANSWER.json]

Without ANSWER.json it polls gscodec's sample answer (the gscodec that GSCODEC names, or the one
on PATH). The transport that carries the JSON is the caller's own.
"""

import os
import subprocess
import sys

import guidescreen_codec as gsc

ROOM_FOR_PROGRAMMES = 16


def device_answer() -> bytes:
    if len(sys.argv) > 1:
        with open(sys.argv[1], "rb") as file:
            return file.read()
    gscodec = os.environ.get("GSCODEC", "gscodec")
    return subprocess.run([gscodec, "sample", "decode", "GET_ALL_PROGRAMMES"],
                          stdout=subprocess.PIPE, check=True).stdout


def main() -> int:
    try:
        polled = gsc.decode("GET_ALL_PROGRAMMES", device_answer(),
                            capacity=ROOM_FOR_PROGRAMMES, keep_going=True, hide_secrets=True)
    except gsc.CodecError as error:  # not JSON at all
        print(f"the answer cannot be read: {error.message}", file=sys.stderr)
        return 1
    programmes = polled.record["pstuInfos"]
    print(f"{len(programmes)} programme(s):")
    for programme in programmes:
        windows = programme["stuOrdinary"]["stuWindows"]
        elements = sum(len(window["pElementsBuf"]) for window in windows)
        print(f"  {programme['szProgrammeID']} {programme['szProgrammeName']!r}: "
              f"{len(windows)} window(s), {elements} element(s)")
    # Findings are the record's losses, not errors: the caller decides what they mean.
    for finding in polled.findings:
        print(f"finding: {finding.path}: {finding.kind}: {finding.detail}")
    print(f"{len(polled.findings)} finding(s)")
    if not programmes:
        return 0

    first = programmes[0]
    plan = {"stuInfo": {
        "szPlanID": "plan-mornings",
        "szPlanName": "Weekday mornings",
        "szSplitScreenID": "left",
        # Enumerations by name; a value alone would do too.
        "emPeriodType": "EM_PLAN_PERIOD_TYPE_JSON_1",
        "nPlayDates": [1, 2, 3, 4, 5],
        "stuPlayStartDate": {"nYear": 2024, "nMonth": 3, "nDay": 1},
        "stuPlayEndDate": {"nYear": 2024, "nMonth": 6, "nDay": 30},
        "stuProgrammes": [{
            "szProgrammeID": first["szProgrammeID"],
            "szProgrammeName": first["szProgrammeName"],
            "stuStartTime": {"nHour": 8},
            "stuEndTime": {"nHour": 11, "nMinute": 30},
        }],
    }}
    for finding in gsc.check_request("ADD_TIMER_PROGRAMMEPLAN", plan):
        print(f"request finding: {finding.path}: {finding.kind}: {finding.detail}")
    print("ADD_TIMER_PROGRAMMEPLAN " + gsc.encode("ADD_TIMER_PROGRAMMEPLAN", plan))
    return 0


if __name__ == "__main__":
    sys.exit(main())
