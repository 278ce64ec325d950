"""scripts/mutants: which changes it makes of a source, and how it tells killed from surviving ones."""

import importlib.machinery
import importlib.util
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "mutants"
LOADER = importlib.machinery.SourceFileLoader("mutants", str(SCRIPT))
mutants = importlib.util.module_from_spec(importlib.util.spec_from_loader("mutants", LOADER))
LOADER.exec_module(mutants)


def changed(source):
    """What the source becomes, without the blanks between the lines."""
    return {" ".join(mutation.applied(source).split()) for mutation in mutants.mutations_of(source)}


class Mutations(unittest.TestCase):
    def test_a_condition_is_forced_both_ways(self):
        self.assertEqual(changed("if (is_open()) return;"), {"if (true) return;", "if (false) return;"})

    def test_a_condition_behind_an_initialiser_is_forced(self):
        self.assertIn("if (int n = f(); false) return;", changed("if (int n = f(); n) return;"))

    def test_a_condition_that_declares_something_stays(self):
        self.assertEqual(changed("if (const auto n = f()) return;"), set())

    def test_a_loop_never_runs_and_never_runs_for_ever(self):
        self.assertEqual(changed("while (f()) {}"), {"while (false) {}"})

    def test_a_comparison_moves_by_one(self):
        self.assertEqual(changed("return a < b;"), {"return a <= b;"})
        self.assertEqual(changed("return a >= b;"), {"return a > b;"})
        self.assertEqual(changed("return a == b;"), {"return a != b;"})
        self.assertEqual(changed("return a && b;"), {"return a || b;"})

    def test_templates_and_arrows_are_no_comparisons(self):
        self.assertEqual(changed("return p->value<int>(x);"), set())

    def test_a_constant_is_one_more_and_one_less(self):
        self.assertEqual(changed("return 10;"), {"return 11;", "return 9;"})
        self.assertEqual(changed("return 0U;"), {"return 1U;"})
        self.assertEqual(changed("return 1'000;"), {"return 1001;", "return 999;"})
        self.assertEqual(changed("return true;"), {"return false;"})

    def test_a_statement_is_left_out(self):
        self.assertEqual(changed("{ f(x); }"), {"{ ; }"})
        self.assertEqual(changed("{ a = b; }"), {"{ ; }"})
        self.assertEqual(changed("{ ++a; }"), {"{ ; }"})
        self.assertEqual(changed("{ break; }"), {"{ ; }"})

    def test_declarations_stay(self):
        self.assertEqual(changed("{ int a = b; const auto c = d; Name e(f); return g; }"), set())

    def test_calls_that_change_only_the_speed_stay(self):
        self.assertEqual(changed("{ a.reserve(n); b.shrink_to_fit(); }"), set())

    def test_comments_texts_and_preprocessor_lines_stay(self):
        self.assertEqual(changed('// a < 1\n#define X 3\n/* f(2); */ return "4 < 5";'), set())

    def test_the_lines_keep_their_numbers(self):
        source = "if (a &&\n    b) {\n  f(x,\n    y);\n}\n"
        for mutation in mutants.mutations_of(source):
            self.assertEqual(mutation.applied(source).count("\n"), source.count("\n"))


class Outcomes(unittest.TestCase):
    """With two sources of one function each, which are compiled at once into an archive, and a test program of one test."""

    SOURCE = "int limited(int a) {\n  if (a > 10) return 20;\n  return a;\n}\n"
    OTHER = "int twice(int a) { return a + a; }\n"
    TEST = ("int limited(int), twice(int);\n"
            "int main() { return limited(12) == 20 && limited(3) == 3 && twice(4) == 8 ? 0 : 1; }\n")
    NINJA = """
rule cc
  command = g++ -g -o $out -c $in
rule ar
  command = ar qc $out $in
rule ld
  command = : && g++ $in -o $out && :
build limits.dir/unity_0.o: cc limits.dir/unity_0_cxx.cxx
build liblimits.a: ar limits.dir/unity_0.o
build test.o: cc {0}/test.cpp
build bin/test_support: ld test.o liblimits.a
build test_support: phony bin/test_support
"""

    def setUp(self):
        if not shutil.which("g++") or not shutil.which("ninja"):
            self.skipTest("g++ or ninja is missing")
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name).resolve()
        self.source = self.root / "support" / "limited.cpp"
        other = self.root / "support" / "twice.cpp"
        build = self.root / "build" / "release"
        for made in (self.source.parent, build / "bin", build / "limits.dir"):
            made.mkdir(parents=True)
        self.source.write_text(self.SOURCE)
        other.write_text(self.OTHER)
        (self.root / "test.cpp").write_text(self.TEST)
        (build / "limits.dir" / "unity_0_cxx.cxx").write_text(f'#include "{self.source}"\n\n#include "{other}"\n')
        (build / "build.ninja").write_text(self.NINJA.format(self.root))
        commands = subprocess.run(["ninja", "-t", "compdb", "cc"], cwd=build, check=True, capture_output=True)
        (build / "compile_commands.json").write_bytes(commands.stdout)
        self.addCleanup(setattr, mutants, "ROOT", mutants.ROOT)
        self.addCleanup(mutants.PROGRAMS.update, support=mutants.PROGRAMS["support"])
        mutants.ROOT = self.root
        mutants.PROGRAMS["support"] = ["test_support"]
        self.tester = mutants.Tester(mutants.Build(build, self.root / "build" / "mutants"), limit=20)
        self.tester.prepare([self.source])

    def outcome(self, line, what):
        [mutant] = [m for m in mutants.mutants_of({self.source: set()})
                    if m.mutation.line(self.SOURCE) == line and m.mutation.what == what]
        return self.tester.outcome(mutant)

    def test_a_change_that_a_test_notices_is_killed(self):
        self.assertEqual(self.outcome(2, "never"), "killed")
        self.assertEqual(self.outcome(2, "always"), "killed")

    def test_a_change_that_no_test_notices_survives(self):
        self.assertEqual(self.outcome(2, "> becomes >="), "survived")

    def test_a_change_to_what_is_no_code_is_none(self):
        mutation = mutants.Mutation(len(self.SOURCE), len(self.SOURCE), "// end", "longer")
        self.assertEqual(self.tester.outcome(mutants.Mutant(self.source, self.SOURCE, mutation)), "none")

    def test_a_change_that_does_not_compile_is_none(self):
        mutation = mutants.Mutation(0, 3, "", "no type")
        self.assertEqual(self.tester.outcome(mutants.Mutant(self.source, self.SOURCE, mutation)), "none")

    def test_lines_may_be_chosen(self):
        sources = mutants.sources_of([self.source.parent, f"{self.source}:2"])
        self.assertEqual({mutant.mutation.line(self.SOURCE) for mutant in mutants.mutants_of(sources)}, {2})
        self.assertEqual(list(mutants.sources_of([f"{self.source}:3"]).values()), [{3}])

    def test_all_are_tried_and_the_source_stays(self):
        tally = mutants.try_all(self.tester, mutants.mutants_of({self.source: set()}), 100, jobs=2)
        self.assertEqual(self.source.read_text(), self.SOURCE)
        self.assertEqual({mutant.mutation.what for mutant in tally.survivors},
                         {"> becomes >=", "10 becomes 11", "10 becomes 9"})
        self.assertEqual(tally.killed, 4)

    def test_known_ones_are_counted_and_not_tried(self):
        known = {("support/limited.cpp", "if (a > 10) return 20;", what) for what in ("> becomes >=", "always")}
        tally = mutants.try_all(self.tester, mutants.mutants_of({self.source: set()}), 100, jobs=2, known=known)
        self.assertEqual((tally.killed, tally.known, len(tally.survivors)), (3, 2, 2))


class Near(unittest.TestCase):
    def test_tests_with_a_word_of_the_name_in_common_are_near(self):
        self.assertEqual(mutants.words_of("command_info") & mutants.words_of("info_text_test"), {"info"})
        self.assertEqual(mutants.words_of("integrals_printer") & mutants.words_of("integrate_test"), {"inte"})
        self.assertEqual(mutants.words_of("command_info") & mutants.words_of("command_line_test"), set())


class Known(unittest.TestCase):
    def test_rows_of_the_table(self):
        page = "| file | line | change | reason |\n|---|---|---|---|\n| `a/b.cpp` | `if (c \\|\\| d) e();` | never | why |\n"
        self.assertEqual(mutants.known_mutants(page), {("a/b.cpp", "if (c || d) e();", "never")})

    def test_the_rows_of_the_page_are_mutants(self):
        page = mutants.ROOT / "docs" / "reliability.md"
        sources = mutants.sources_of([mutants.ROOT / folder for folder in mutants.PROGRAMS])
        rows = {mutant.row for mutant in mutants.mutants_of(sources)}
        self.assertEqual(mutants.known_mutants(page.read_text()) - rows, set())


if __name__ == "__main__":
    unittest.main()
