# Folder walks skip what git ignores, by git's own rules (compared with
# git check-ignore): negation, anchoring, "**", folder-only patterns, nested
# .gitignore files, .git/info/exclude. --no-ignore walks everything; files
# named on the command line are always linted; outside a repository nothing
# is ignored. (libgit2 drops a '!' pattern that negates nothing in its own
# file, so a nested .gitignore cannot re-include what a parent one excludes;
# the negations here sit in the file of the pattern they undo.)
command -v git >/dev/null || { echo "skipped: no git"; exit 77; }
mkdir -p repo && cd repo || fail "no repo folder"
git init -q . || fail "git init"
mkdir -p build out/x docs/a/b sub/deep/er a/b/c top/top_only.d
put .gitignore '*.tmp.v\nbuild/\n/top_only.v\ngen_*.v\n!gen_keep.v\ndocs/**/skip.v\na/**/deep.v\nout\nonly_dir/\n'
put sub/.gitignore 'local.v\n/anch.v\n*.tmp.v\n!again.tmp.v\n'
put .git/info/exclude 'excluded.v\n'
mkdir -p only_dir fileonly
files="keep.v x.tmp.v build/b.v out/x/o.v top_only.v top/top_only.v gen_1.v gen_keep.v sub/gen_2.v
docs/skip.v docs/a/b/skip.v docs/a/keep.v a/deep.v a/b/c/deep.v a/b/c/other.v sub/local.v sub/deep/local.v
sub/anch.v sub/deep/anch.v sub/again.tmp.v excluded.v sub/excluded.v only_dir/f.v fileonly/only_dir.v"
for f in $files; do put "$f" '// FINDING warning latch x\n'; done
put fileonly/only_dir '// FINDING warning latch x\n'

expected=""
for f in $files; do
  git check-ignore -q "$f" || expected="$expected$f\n"
done
expected=$(printf '%b' "$expected" | sort)
fake lint --format=github .
got=$(sed -n 's/^::warning file=\.\/\([^,]*\),.*/\1/p' "$OUT" | sort)
[ "$got" = "$expected" ] || fail "walk differs from git check-ignore: got [$got] expected [$expected]"

# --no-ignore takes every file.
fake lint --format=github --no-ignore .
[ "$(wc -l <"$OUT")" -eq "$(echo $files | wc -w)" ] || fail "--no-ignore did not take every file"

# A file named explicitly is linted even when ignored.
fake lint build/b.v
expect_rc 1
expect_out 'build/b.v:1:1: warning: x [latch]\n'

# Walking a sub-folder applies the rules of the whole repository.
fake lint --format=github sub
got=$(sed -n 's/^::warning file=\([^,]*\),.*/\1/p' "$OUT" | sort | tr '\n' ' ')
[ "$got" = "sub/again.tmp.v sub/deep/anch.v " ] || fail "sub-folder walk: $got"
cd ..

# Outside a repository a .gitignore means nothing.
mkdir -p plain
put plain/.gitignore '*.v\n'
put plain/p.v '// FINDING warning latch p\n'
fake lint plain
expect_out 'plain/p.v:1:1: warning: p [latch]\n'
