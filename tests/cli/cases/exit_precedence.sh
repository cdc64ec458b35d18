# With several outcomes in one run: 2 wins over 3, 3 over 1, 1 over 0.
put clean.v 'x\n'
put change.v 'x \n'
put guard.v 'LOSE x\n'
fake format --check clean.v
expect_rc 0
fake format --check clean.v change.v
expect_rc 1
fake format --check change.v guard.v clean.v
expect_rc 3
fake format --check guard.v missing.v change.v
expect_rc 2
expect_out 'guard.v\nchange.v\n'
