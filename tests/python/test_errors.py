"""Failures: each reaches the caller as a CodecError with the library's status and a message that
says where, or as the Python error of a call Python itself refuses."""

import ctypes
import math
import unittest

import guidescreen_codec as gsc

PLAN = "ADD_TIMER_PROGRAMMEPLAN"


class CodecErrors(unittest.TestCase):
    def assert_fails(self, call, status: gsc.Status, *fragments: str) -> gsc.CodecError:
        with self.assertRaises(gsc.CodecError) as raised:
            call()
        error = raised.exception
        self.assertEqual(error.status, status)
        self.assertEqual(error.status_name, "GSC_STATUS_" + status.name)
        self.assertEqual(str(error), error.message)
        for fragment in fragments:
            self.assertIn(fragment, error.message)
        return error

    def test_malformed_answers_say_where(self) -> None:
        cases = [
            ('{"Programme": ', "line 1, column 15"),
            ('{\n  "Programme": {"Enable": true,}\n}', "line 2, column 32"),
            ('{"Programme": {}} {}', "line 1, column 19"),
            (b'{"Programme": {"ProgrammeName": "\xc3"}}', "invalid UTF-8"),
            ("", "line 1, column 1"),
        ]
        for answer, where in cases:
            with self.subTest(answer=answer):
                error = self.assert_fails(lambda: gsc.decode("GET_PROGRAMME_BYID", answer),
                                          gsc.Status.MALFORMED_JSON, "malformed JSON: ", where)
                self.assertEqual([f.kind for f in error.findings], ["json-malformed"])
                # check lists findings, but text that is not JSON is still an error.
                self.assert_fails(lambda: gsc.check("GET_PROGRAMME_BYID", answer),
                                  gsc.Status.MALFORMED_JSON, where)

    def test_unknown_operations_suggest_the_close_names(self) -> None:
        calls = {
            "decode": lambda op: gsc.decode(op, "{}"),
            "check": lambda op: gsc.check(op, "{}"),
            "encode": lambda op: gsc.encode(op, {}),
            "check_request": lambda op: gsc.check_request(op, {}),
            "record_size": lambda op: gsc.record_size(op, "answer"),
            "record_from_fields": lambda op: gsc.record_from_fields(op, "request", {}),
            "record_to_fields": lambda op: gsc.record_to_fields(op, "request", 0),
        }
        messages = {}
        for name, call in calls.items():
            with self.subTest(name):
                messages[name] = self.assert_fails(
                    lambda: call("GET_ALL_PROGRAMS"), gsc.Status.UNKNOWN_OPERATION,
                    "'GET_ALL_PROGRAMS'", "did you mean GET_ALL_PROGRAMMES").message
        # The package words the message itself where the library writes none: the same words.
        self.assertEqual(len(set(messages.values())), 1, messages)
        self.assert_fails(lambda: gsc.decode("GET_ALL_PROGRAMMES\0X", "{}"),
                          gsc.Status.UNKNOWN_OPERATION)
        self.assert_fails(lambda: gsc.decode("", "{}"), gsc.Status.UNKNOWN_OPERATION)
        self.assert_fails(lambda: gsc.encode("GET_\ud800", {}), gsc.Status.UNKNOWN_OPERATION)

    def test_forms_that_do_not_describe_the_record_name_the_field(self) -> None:
        cases = [
            ({"stuInfo": {"szPlanName": "y" * 65}}, "stuInfo.szPlanName"),
            ({"stuInfo": {"szColour": "red"}}, "szColour"),
            ({"stuInfo": {"nPlayDates": ["monday"]}}, "stuInfo.nPlayDates[0]"),
            ({"stuInfo": {"stuProgrammes": [{}, {"stuStartTime": {"nHour": "8"}}]}},
             "stuInfo.stuProgrammes[1].stuStartTime.nHour"),
            ({"stuInfo": {"emPeriodType": "EM_NO_SUCH_NAME"}}, "stuInfo.emPeriodType"),
            ({"stuInfo": {"nPlayDates": [2 ** 40]}}, "stuInfo.nPlayDates[0]"),
        ]
        for form, path in cases:
            for call in (gsc.encode, gsc.check_request,
                         lambda op, f: gsc.record_from_fields(op, "request", f)):
                with self.subTest(form=form, call=call):
                    self.assert_fails(lambda: call(PLAN, form), gsc.Status.INVALID_FIELDS, path)

    def test_room_beyond_what_the_library_takes(self) -> None:
        for options in ({"capacity": (1 << 20) + 1}, {"element_buffer": (1 << 26) + 1}):
            with self.subTest(**options):
                self.assert_fails(lambda: gsc.decode("GET_ALL_PROGRAMMES", "{}", **options),
                                  gsc.Status.INVALID_ARGUMENT)
        # The largest room it takes is taken (by a record without caller arrays: for a listing it
        # would be a million records laid out).
        gsc.decode("GET_GUIDESCREEN_CFG_BYID", "{}", capacity=1 << 20, element_buffer=1 << 26)

    def test_a_record_of_the_wrong_size(self) -> None:
        native = gsc.record_from_fields("GET_PROGRAMME_BYID", "request", {"szProgrammeID": "P"})
        # The same bytes named as another operation's record: its dwSize is not that size.
        self.assert_fails(lambda: gsc.record_to_fields("ADD_TIMER_PROGRAMMEPLAN", "request",
                                                       native),
                          gsc.Status.WRONG_RECORD_SIZE, "dwSize")
        zeroed = (ctypes.c_uint64 * 16)()
        self.assert_fails(lambda: gsc.record_to_fields("GET_PROGRAMME_BYID", "request", zeroed),
                          gsc.Status.WRONG_RECORD_SIZE)


class PythonErrors(unittest.TestCase):
    def test_calls_python_refuses_before_the_library(self) -> None:
        cases = [
            (ValueError, lambda: gsc.decode("GET_ALL_PROGRAMMES", "{}", capacity=-1)),
            # Beyond 32 bits ctypes would pass another room, here 1.
            (ValueError, lambda: gsc.decode("GET_ALL_PROGRAMMES", "{}", capacity=(1 << 32) + 1)),
            (ValueError, lambda: gsc.decode("GET_ALL_PROGRAMMES", "{}", element_buffer=1.5)),
            (ValueError, lambda: gsc.record_size("GET_ALL_PROGRAMMES", "output")),
            (TypeError, lambda: gsc.decode("GET_ALL_PROGRAMMES", {"infos": {}})),
            (TypeError, lambda: gsc.decode(b"GET_ALL_PROGRAMMES", "{}")),
            (TypeError, lambda: gsc.encode(PLAN, '{"stuInfo": {}}')),
            (TypeError, lambda: gsc.encode(PLAN, {"stuInfo": {"szPlanID": object()}})),
            (ValueError, lambda: gsc.encode("SET_GUIDESCREEN_CFG", {"x": math.nan})),
        ]
        for error, call in cases:
            with self.subTest(error=error):
                self.assertRaises(error, call)

    def test_codec_errors_are_exceptions_with_their_fields(self) -> None:
        error = gsc.CodecError(2, "malformed JSON: line 1, column 1: x")
        self.assertIsInstance(error, Exception)
        self.assertEqual((error.status, error.status_name, error.findings),
                         (gsc.Status.MALFORMED_JSON, "GSC_STATUS_MALFORMED_JSON", []))
        # A status newer than the package still has a name.
        self.assertEqual(gsc.CodecError(42, "?").status_name, "GSC_STATUS_42")


if __name__ == "__main__":
    unittest.main()
