# The version comes from the engine, by the command and by the flag.
quill version
expect_rc 0
expect_out 'core_engine v1.25\n'
quill --version
expect_rc 0
expect_out 'core_engine v1.25\n'
fake version
expect_out 'fake_engine v0\n'
