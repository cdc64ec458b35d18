# --diff prints a unified diff (3 lines of context) and exits 1 when a file
# would change; nothing is written.
put clean.v '\n'
quill format --diff clean.v
expect_rc 0
expect_out_empty

put u.v 'module m;\nendmodule'
cp u.v u.orig
quill format --diff u.v
expect_rc 1
expect_out_has '--- u.v'
expect_out_has '+++ u.v'
expect_out_has '\ No newline at end of file'
same_file u.v u.orig

# Exact hunks with the stand-in engine (trailing blanks removed).
put t.v '1\n2 \n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n13\n14\n15\n16 \n17\n'
fake format --diff t.v
expect_rc 1
expect_out '--- t.v\n+++ t.v\n@@ -1,5 +1,5 @@\n 1\n-2 \n+2\n 3\n 4\n 5\n@@ -13,5 +13,5 @@\n 13\n 14\n 15\n-16 \n+16\n 17\n'

# Several files: one diff after the other, in order.
put a.v 'a \n'
put b.v 'b\n'
put c.v 'c \n'
fake format --diff a.v b.v c.v
expect_rc 1
expect_out '--- a.v\n+++ a.v\n@@ -1 +1 @@\n-a \n+a\n--- c.v\n+++ c.v\n@@ -1 +1 @@\n-c \n+c\n'
