"""Findings: what an answer held that the record could not take, what a record could not send,
and how a value that cannot be converted is met with and without keep_going."""

import ctypes
import json
import unittest

import guidescreen_codec as gsc
from codec_fixtures import listing, programme, text_window

TWO_PROGRAMMES = listing({"P-1": programme("first", [text_window("a", "b")]),
                          "P-2": programme("second", [text_window("c")])})


def window(decoded: gsc.Decoded, programme_index: int = 0) -> dict:
    return decoded.record["pstuInfos"][programme_index]["stuOrdinary"]["stuWindows"][0]


class Answers(unittest.TestCase):
    def test_an_over_long_text_is_cut_and_found_where_it_was(self) -> None:
        # 300 two-byte characters into 512 bytes: cut between characters, not inside one.
        decoded = gsc.decode("GET_ALL_PROGRAMMES",
                             listing({"P-1": programme("p", [text_window("hi", "é" * 300)])}))
        self.assertEqual(decoded.findings, [gsc.Finding(
            "text-cut", "infos.P-1.Ordinary.Windows[0].Elements[1].Text.Content",
            "600 bytes received, 510 kept in a field of 512")])
        entry = window(decoded)["pElementsBuf"][1]
        self.assertEqual(entry["record"]["stuText"]["szContent"], "é" * 255)

    def test_room_given_to_the_record(self) -> None:
        # (capacity, element_buffer, the kinds found, programmes received, elements of the first
        # window)
        cases = [
            (None, None, [], 2, 2),
            (1, None, ["collection-clamped"], 1, 2),
            (0, None, ["collection-clamped"], 0, None),
            (None, 0, ["element-buffer-full"] * 2, 2, 0),
            (2, 1, ["element-buffer-full"] * 2, 2, 0),
        ]
        for capacity, element_buffer, kinds, records, elements in cases:
            with self.subTest(capacity=capacity, element_buffer=element_buffer):
                decoded = gsc.decode("GET_ALL_PROGRAMMES", TWO_PROGRAMMES, capacity=capacity,
                                     element_buffer=element_buffer)
                self.assertEqual([f.kind for f in decoded.findings], kinds)
                self.assertEqual(len(decoded.record["pstuInfos"]), records)
                if capacity is not None:
                    self.assertEqual(decoded.record["nMaxInfosNum"], capacity)
                if elements is not None:
                    self.assertEqual(len(window(decoded)["pElementsBuf"]), elements)

    def test_a_clamped_listing_names_what_was_left(self) -> None:
        decoded = gsc.decode("GET_ALL_PROGRAMMES", TWO_PROGRAMMES, capacity=1)
        self.assertEqual([p["szProgrammeID"] for p in decoded.record["pstuInfos"]], ["P-1"])
        (finding,) = decoded.findings
        self.assertEqual((finding.kind, finding.path), ("collection-clamped", "infos"))
        self.assertIn("P-2", finding.detail)

    def test_an_array_longer_than_its_field_is_clamped(self) -> None:
        answer = json.dumps({"ProgrammePlan": {"PlanType": 1,
                                               "Timer": {"PlayDates": list(range(40))}}})
        decoded = gsc.decode("GET_PROGRAMMEPLAN_BYID", answer)
        self.assertEqual([(f.kind, f.path) for f in decoded.findings],
                         [("array-clamped", "ProgrammePlan.Timer.PlayDates")])
        self.assertEqual(decoded.record["stuTimerPlan"]["nPlayDates"], list(range(32)))

    def test_a_value_that_cannot_be_converted(self) -> None:
        answer = json.dumps({"DisplayScreenCfg": {"ID": "hall-1", "Bright": "high",
                                                  "Contrast": 7}})
        failure = gsc.Finding("conversion-failed", "DisplayScreenCfg.Bright",
                              "Value is not convertible to Int.")
        # keep_going: read as null, noted, and the rest read.
        decoded = gsc.decode("GET_GUIDESCREEN_CFG_BYID", answer, keep_going=True)
        self.assertEqual(decoded.findings, [failure])
        self.assertEqual((decoded.record["stuInfo"]["nBright"],
                          decoded.record["stuInfo"]["nContrast"]), (0, 7))
        self.assertEqual(gsc.check("GET_GUIDESCREEN_CFG_BYID", answer), [failure])
        # Without it, the reading stops there: an error carrying the failure as its last finding.
        with self.assertRaises(gsc.CodecError) as raised:
            gsc.decode("GET_GUIDESCREEN_CFG_BYID", answer)
        error = raised.exception
        self.assertEqual((error.status, error.status_name),
                         (gsc.Status.CONVERSION_FAILED, "GSC_STATUS_CONVERSION_FAILED"))
        self.assertIn("DisplayScreenCfg.Bright", error.message)
        self.assertEqual(error.findings[-1], failure)

    def test_findings_before_a_failure_are_kept(self) -> None:
        answer = json.dumps({"DisplayScreenCfg": {"ID": "x" * 70, "Bright": [1]}})
        with self.assertRaises(gsc.CodecError) as raised:
            gsc.decode("GET_GUIDESCREEN_CFG_BYID", answer)
        self.assertEqual([f.kind for f in raised.exception.findings],
                         ["text-cut", "conversion-failed"])


class Requests(unittest.TestCase):
    PLAN = {"stuInfo": {"szPlanID": "plan-1", "nPlayDates": [1, 2, 3]}}

    def test_a_count_beyond_its_array_is_found_and_not_sent(self) -> None:
        form = json.loads(json.dumps(self.PLAN))
        form["stuInfo"]["nPlayDatesNum"] = 40
        self.assertEqual(gsc.check_request("ADD_TIMER_PROGRAMMEPLAN", form), [gsc.Finding(
            "count-beyond-capacity", "stuInfo.nPlayDatesNum", "count 40, capacity 32: 8 not sent")])
        request = json.loads(gsc.encode("ADD_TIMER_PROGRAMMEPLAN", form))
        self.assertEqual(len(request["info"]["Timer"]["PlayDates"]), 32)

    def test_a_text_that_fills_its_field_is_sent_whole(self) -> None:
        # 64 bytes fit a 64-byte field without terminator; 65 do not fit (test_errors).
        form = {"stuInfo": {"szPlanName": "y" * 64}}
        self.assertEqual(gsc.check_request("ADD_TIMER_PROGRAMMEPLAN", form), [gsc.Finding(
            "text-unterminated", "stuInfo.szPlanName",
            "no terminator in its 64 bytes: all of them sent")])
        request = json.loads(gsc.encode("ADD_TIMER_PROGRAMMEPLAN", form))
        self.assertEqual(request["info"]["PlanName"], "y" * 64)

    def test_a_count_left_out_is_its_arrays_length(self) -> None:
        self.assertEqual(gsc.check_request("ADD_TIMER_PROGRAMMEPLAN", self.PLAN), [])
        request = json.loads(gsc.encode("ADD_TIMER_PROGRAMMEPLAN", self.PLAN))
        self.assertEqual(request["info"]["Timer"]["PlayDates"], [1, 2, 3])

    def test_bytes_that_are_not_utf8_in_a_callers_record(self) -> None:
        # Only C code can put them there; the form shows them as lone surrogates and refuses them
        # on the way back, naming the field.
        native = gsc.record_from_fields("GET_PROGRAMME_BYID", "request",
                                        {"szProgrammeID": "MARK"})
        at = native.bytes().index(b"MARK")
        ctypes.memmove(native.address + at, b"P-\xff\x00", 4)
        form = gsc.record_to_fields("GET_PROGRAMME_BYID", "request", native)
        self.assertEqual(form, {"szProgrammeID": "P-\udcff"})
        with self.assertRaises(gsc.CodecError) as raised:
            gsc.encode("GET_PROGRAMME_BYID", form)
        self.assertEqual(raised.exception.status, gsc.Status.INVALID_FIELDS)
        self.assertIn("'szProgrammeID'", raised.exception.message)


if __name__ == "__main__":
    unittest.main()
