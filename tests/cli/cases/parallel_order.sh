# Many files on several workers: output in input order, the same for any
# number of workers, each file answered once.
mkdir -p many
for i in $(seq -w 1 300); do
  printf 'x\n// FINDING warning check%s file %s\n' "$i" "$i" >"many/f$i.v"
done
fake lint -j 1 many
expect_rc 1
cp "$OUT" one_worker.txt
[ "$(wc -l <one_worker.txt)" -eq 300 ] || fail "expected 300 findings"
for jobs in 2 7 32; do
  fake lint -j "$jobs" many
  expect_rc 1
  expect_out_file one_worker.txt
done
fake lint --jobs 4 --format=raw many
expect_out_lines 300
head -n 1 "$OUT" | grep -qF '"check":"check001"' || fail "first file out of order"
tail -n 1 "$OUT" | grep -qF '"check":"check300"' || fail "last file out of order"

fake format --check -j 5 many
expect_rc 0
quill lint -j 3 --format=raw many
expect_out_lines 300
