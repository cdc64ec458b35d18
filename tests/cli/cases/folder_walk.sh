# Folders are walked for .v .sv .vh .svh (any letter case), sorted by path;
# hidden entries and other extensions are skipped; named files are always
# taken. The stand-in formatter changes every file with a trailing blank.
mkdir -p rtl/sub rtl/.git rtl/b
for f in rtl/z.v rtl/a.sv rtl/sub/c.vh rtl/sub/D.SVH rtl/b/e.v rtl/.git/h.v rtl/.hidden.v rtl/notes.txt rtl/pins.xdc; do
  put "$f" 'x \n'
done
put other.txt 'y \n'
fake format --check rtl other.txt
expect_rc 1
expect_out 'rtl/a.sv\nrtl/b/e.v\nrtl/sub/D.SVH\nrtl/sub/c.vh\nrtl/z.v\nother.txt\n'
expect_err '6 files would be reformatted, 0 unchanged\n'

# A trailing slash and a nested path name the same files.
fake format --check rtl/ rtl/z.v rtl/sub
expect_rc 1
expect_out 'rtl/a.sv\nrtl/b/e.v\nrtl/sub/D.SVH\nrtl/sub/c.vh\nrtl/z.v\n'

# The constraint extensions for highlight.
fake highlight --format=json rtl
expect_rc 0
expect_out_lines 1
expect_out_has '"file":"rtl/pins.xdc"'
