"""The audit of instructions: it finds what a 486 lacks wherever code is, and reads nothing else as code."""
from __future__ import annotations

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from tests.tools import small_programs as small
from tools.wine_home import ROOT
from tools.audit.audit_instructions import LIST, BadList, audit, read_list
from tools.audit.link_map import BadMap, read_map

ASKS_FIRST = """pushf; pop %eax; mov %eax, %ecx; xor $0x200000, %eax; push %eax; popf; pushf; pop %eax; cmp %eax, %ecx
je 1f; cpuid; 1: ret"""


class ProgramCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory(prefix="quellix-instructions-")
        cls.addClassCleanup(temporary.cleanup)
        cls.folder = Path(temporary.name)
        cls.known = read_list(LIST.read_text())

    def build(self, code: str, name: str = "small") -> tuple[Path, str]:
        """A program with a function of this code in assembler, and its map."""
        (self.folder / f"{name}_code.s").write_text(f'.section .text$planted,"x"\n{code}\n')
        options = [f"{name}_code.s", f"-Wl,-Map,{name}.map"]
        small.program(self.folder, name, ["Sleep(0)"], *options)
        return self.folder / f"{name}.exe", (self.folder / f"{name}.map").read_text()

    def findings(self, code: str) -> list[str]:
        program, link_map = self.build(code)
        return audit(program, link_map, self.known)[0]


class Instructions(ProgramCase):
    def test_what_came_later_is_found_with_its_place_and_processor(self):
        pro, mmx, sse = "came with the Pentium Pro", "uses the registers of MMX", "uses the registers of SSE"
        rows = {
            "cmovb %eax, %ecx": ("cmovb ecx,eax", pro),
            "cmovge (%eax), %ecx": ("cmovge ecx,DWORD PTR [eax]", pro),
            "fcmovb %st(1), %st": ("fcmovb st,st(1)", pro),
            "fucomi %st(1), %st": ("fucomi st,st(1)", pro),
            "fcomip %st(1), %st": ("fcomip st,st(1)", pro),
            "nopl (%eax)": ("nop DWORD PTR [eax]", pro),
            "rdtsc": ("rdtsc", "came with the Pentium"),
            "lock cmpxchg8b (%eax)": ("cmpxchg8b QWORD PTR [eax]", "came with the Pentium"),
            "cpuid": ("cpuid", "came with the Pentium"),
            "sysenter": ("sysenter", "came with the Pentium II"),
            "movd %eax, %mm1": ("movd mm1,eax", mmx),
            "emms": ("emms", "came with the Pentium II"),
            "movaps %xmm1, %xmm0": ("movaps xmm0,xmm1", sse),
            "movsd (%eax), %xmm0": ("movsd xmm0,QWORD PTR [eax]", sse),
            "prefetchnta (%eax)": ("prefetchnta BYTE PTR [eax]", "came with the Pentium III"),
            "fisttpl (%eax)": ("fisttp DWORD PTR [eax]", "came with the Pentium 4"),
            "popcnt %eax, %eax": ("popcnt eax,eax", "is not in the list of instructions"),
            "hlt": ("hlt", "is for the system alone; is this data taken for code?"),
            "mov %cr0, %eax": ("mov eax,cr0", "is for the system alone; is this data taken for code?"),
        }
        for code, (shown, what) in rows.items():
            with self.subTest(code=code):
                found = self.findings(f"nop\n{code}\nret")
                self.assertEqual([finding.split(" ", 1)[1] for finding in found], [f"in planted: {shown}: {what}"])

    def test_what_a_486_has_passes(self):
        code = """bswap %eax; lock xadd %eax, (%ecx); cmpxchg %eax, (%ecx); rep movsl; repne scasb; fsin; fucompp; fnstsw %ax; sahf
        movzbl %al, %eax; sete %al; shld $3, %eax, %ecx; bt %eax, %ecx; nop; xchg %ax, %ax; pause; ud2; lea 0(%esi), %esi
        fs mov (%eax), %eax; jecxz 1f; call *%eax; 1: loop 1b; enter $8, $0; leave; ret $8"""
        self.assertEqual(self.findings(code), [])

    def test_the_processor_may_be_asked_for_when_it_is_known_to_answer(self):
        self.assertEqual(self.findings(ASKS_FIRST), [])
        apart = ASKS_FIRST.replace("je 1f; cpuid; 1: ret", 'ret\n.section .text$unasked,"x"\ncpuid; ret')
        self.assertEqual(len(self.findings(apart)), 1)

    def test_data_beside_the_code_is_not_read_as_code(self):
        cmov = ".byte 0x0f, 0x42, 0xc8"
        self.assertEqual(self.findings(f"nop; ret\n.section .ctors\n{cmov}\n.section .gcc_except_table\n{cmov}"), [])
        self.assertEqual(len(self.findings(f'nop; ret\n.section .text$more,"x"\n{cmov}; ret')), 1)

    def test_the_count_tells_floating_point(self):
        program, link_map = self.build("fldz; fstp %st; nop; ret")
        self.assertEqual(audit(program, link_map, self.known)[2], 2)


class Maps(ProgramCase):
    def test_the_map_of_another_program_is_refused(self):
        program, _ = self.build("nop; ret")
        _, larger = self.build(".skip 4000, 0x90; ret", "larger")
        with self.assertRaises(BadMap):
            audit(program, larger, self.known)

    def test_a_text_that_is_no_map_is_refused(self):
        with self.assertRaises(BadMap):
            read_map("nothing\n")

    def test_long_names_and_what_the_linker_puts_in_are_read(self):
        long_name = "a" * 200
        _, link_map = self.build(f'ret\n.section .text${long_name},"x"\nnop; ret\n.section .ctors\n.long 0')
        text = next(output for output in read_map(link_map) if output.name == ".text")
        names = [piece.section for piece in text.pieces]
        self.assertIn(f".text${long_name}", names)
        self.assertIn(".ctors", names)
        self.assertEqual(names.count("LONG"), 4)


class Lists(unittest.TestCase):
    def test_a_line_that_cannot_be_read_and_a_name_twice_are_errors(self):
        for text in ("8086\tyes", "8086\tmaybe\tmov", "8086\tyes\tmov mov", "8086\tyes\tmov\n80386\tno\tmov"):
            with self.subTest(text=text), self.assertRaises(BadList):
                read_list(text)


class CommandLine(ProgramCase):
    def run_audit(self, code: str) -> tuple[int, str]:
        self.build(code)
        command = [sys.executable, "-B", "-m", "tools.audit.audit_instructions", "small.exe", "small.map"]
        done = subprocess.run([*command[:4], *(str(self.folder / name) for name in command[4:])], cwd=ROOT,
                              stdout=subprocess.PIPE, text=True)
        return done.returncode, done.stdout

    def test_a_planted_instruction_is_one_line_and_status_1(self):
        status, output = self.run_audit("cmovb %eax, %ecx; ret")
        self.assertEqual(status, 1)
        self.assertRegex(output, r"^small\.exe: 0x40[0-9a-f]+ in planted: cmovb ecx,eax: came with the Pentium Pro\n$")

    def test_a_good_program_gives_one_line_and_status_0(self):
        status, output = self.run_audit("nop; ret")
        self.assertEqual(status, 0)
        self.assertRegex(output, r"^small\.exe: \d+ instructions, 0 of them for floating point, none that a 486 lacks\n$")


if __name__ == "__main__":
    unittest.main()
