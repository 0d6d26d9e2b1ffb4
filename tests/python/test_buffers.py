"""Output buffers and storage the package sizes for the library: texts larger than the first
guess, a guess that fits exactly or is one byte short, and records laid out in Python's memory."""

import sys
import unittest
from unittest import mock

import guidescreen_codec as gsc
from codec_fixtures import listing, needs_gscodec, programme, gscodec_json, text_window
from guidescreen_codec._library import library

# Four hundred programmes whose form is many times their answer's size.
MANY = listing({f"P-{i:04}": programme(f"programme {i}", [text_window("x")]) for i in range(400)})


class Calls:
    """Counts the calls of one library function and the capacities given to it."""

    def __init__(self, test: unittest.TestCase, name: str, capacity_argument: int):
        lib = library()
        original = getattr(lib, name)
        self.capacities = []

        def counted(*args):
            self.capacities.append(args[capacity_argument])
            return original(*args)

        setattr(lib, name, counted)
        test.addCleanup(setattr, lib, name, original)


class Growth(unittest.TestCase):
    def test_a_form_larger_than_the_first_guess(self) -> None:
        calls = Calls(self, "gsc_decode_fields", 7)
        decoded = gsc.decode("GET_ALL_PROGRAMMES", MANY)
        self.assertEqual(len(calls.capacities), 2)
        self.assertGreater(calls.capacities[1], calls.capacities[0])
        self.assertEqual(len(decoded.record["pstuInfos"]), 400)
        self.assertEqual(decoded.record["pstuInfos"][399]["szProgrammeName"], "programme 399")

    @needs_gscodec
    def test_the_grown_form_is_what_gscodec_prints(self) -> None:
        self.assertEqual(gsc.decode("GET_ALL_PROGRAMMES", MANY).record,
                         gscodec_json("decode", "GET_ALL_PROGRAMMES", answer=MANY))

    def test_a_guess_that_fits_exactly_or_is_one_byte_short(self) -> None:
        # The text's length, learnt from the second call of a guess far too small.
        calls = Calls(self, "gsc_decode_fields", 7)
        with mock.patch.object(gsc, "_first_guess", lambda _: 1):
            expected = gsc.decode("GET_ALL_PROGRAMMES", MANY)
        room = calls.capacities[-1]  # the length and the terminator
        for guess, count in ((room, 1), (room - 1, 2), (room + 1, 1)):
            with self.subTest(guess=guess - room):
                calls.capacities.clear()
                with mock.patch.object(gsc, "_first_guess", lambda _: guess):
                    self.assertEqual(gsc.decode("GET_ALL_PROGRAMMES", MANY), expected)
                self.assertEqual(len(calls.capacities), count)

    def test_every_text_grows_the_same_way(self) -> None:
        form = {"stuInfo": {"szPlanID": "plan-1", "nPlayDates": [1, 2, 3],
                            "stuProgrammes": [{"szProgrammeID": f"P-{i}"} for i in range(32)]}}
        expected = gsc.encode("ADD_TIMER_PROGRAMMEPLAN", form)
        native = gsc.record_from_fields("GET_ALL_PROGRAMMES", "answer",
                                        gsc.decode("GET_ALL_PROGRAMMES", MANY).record)
        expected_fields = gsc.record_to_fields("GET_ALL_PROGRAMMES", "answer", native)
        with mock.patch.object(gsc, "_first_guess", lambda _: 1):
            self.assertEqual(gsc.encode("ADD_TIMER_PROGRAMMEPLAN", form), expected)
            self.assertEqual(gsc.record_to_fields("GET_ALL_PROGRAMMES", "answer", native),
                             expected_fields)
        self.assertEqual(len(expected_fields["pstuInfos"]), 400)


class NativeRecords(unittest.TestCase):
    def test_storage_is_sized_by_the_library_and_aligned(self) -> None:
        cases = [
            # (operation, which, form, needs storage)
            ("GET_PROGRAMME_BYID", "request", {"szProgrammeID": "P-1"}, False),
            ("GET_ALL_PROGRAMMES", "answer", gsc.decode("GET_ALL_PROGRAMMES", MANY).record, True),
            ("ADD_ONE_PROGRAMME", "request",
             {"stuInfo": {"stuOrdinary": {"stuWindows": [{"pElementsBuf": [
                 {"emElementType": "EM_ELEMENT_TYPE_TEXT", "record": {"szName": "t"}}]}]}}},
             True),
        ]
        for op, which, form, needs_storage in cases:
            with self.subTest(op):
                native = gsc.record_from_fields(op, which, form)
                self.assertEqual(native.storage_size > 0, needs_storage)
                self.assertEqual(native.address % 16, 0)
                self.assertEqual(native.storage_address % 16, 0)
                # dwSize, the record's first field, is set.
                self.assertEqual(int.from_bytes(native.bytes()[:4], sys.byteorder), native.size)
                self.assertEqual(native.pointer.value, native.address)
                again = gsc.record_to_fields(op, which, native)
                self.assertEqual(gsc.record_to_fields(op, which, native.address), again)


if __name__ == "__main__":
    unittest.main()
