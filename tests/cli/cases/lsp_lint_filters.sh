# The language server's diagnostics go through the same filters as quill
# lint: module by module, suppression comments, the nearest quill.toml
# (re-read when it changes), and a bad quill.toml shown as a diagnostic.
command -v python3 >/dev/null || { echo "skipped: no python3"; exit 77; }
mkdir -p proj
put proj/quill.toml '[lint]\nignore = ["comb-loop"]\n'
cat >session.py <<'PY'
import json, subprocess, sys, time, os
quill, uri, text, toml = sys.argv[1], sys.argv[2], sys.argv[3], sys.argv[4]
proc = subprocess.Popen([quill, "lsp"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
def send(message):
    body = json.dumps(message).encode()
    proc.stdin.write(b"Content-Length: %d\r\n\r\n" % len(body) + body)
    proc.stdin.flush()
def receive_diagnostics():
    while True:
        header = b""
        while not header.endswith(b"\r\n\r\n"):
            header += proc.stdout.read(1)
        length = int(header.split(b"Content-Length:")[1].split(b"\r\n")[0])
        message = json.loads(proc.stdout.read(length))
        if message.get("method") == "textDocument/publishDiagnostics":
            return message["params"]["diagnostics"]
send({"jsonrpc": "2.0", "id": 1, "method": "initialize", "params": {"capabilities": {}}})
send({"jsonrpc": "2.0", "method": "initialized", "params": {}})
send({"jsonrpc": "2.0", "method": "textDocument/didOpen",
      "params": {"textDocument": {"uri": uri, "languageId": "verilog", "version": 1, "text": text}}})
for d in receive_diagnostics():
    print("first", d["range"]["start"]["line"], d["code"], d["message"])
time.sleep(1.1)  # a new time stamp for the config file
with open(toml, "w") as f:
    f.write("[lint]\nselct = []\n")
send({"jsonrpc": "2.0", "method": "textDocument/didChange",
      "params": {"textDocument": {"uri": uri, "version": 2}, "contentChanges": [{"text": text}]}})
for d in receive_diagnostics():
    print("second", d["range"]["start"]["line"], d["code"], d["message"])
send({"jsonrpc": "2.0", "id": 2, "method": "shutdown"})
send({"jsonrpc": "2.0", "method": "exit"})
proc.wait(timeout=10)
PY
text=$(printf 'module a(input x, output y);\nwire w;\nwire w;\nassign y = x;\nendmodule\nmodule b(input x, output y);\nwire v;\nwire v; // quill: disable-line dupli-define\nassign y = y;\nwire k; // quill: disable-line lach\nendmodule\n')
python3 session.py "$QUILL" "file://$PWD/proj/a%20b.v" "$text" proj/quill.toml >lsp.txt 2>lsp.err || fail "session failed: $(cat lsp.err)"
OUT=lsp.txt
expect_out_has "first 2 dupli-define signal 'w' defined 2 times"
expect_out_has "first 9 suppression unknown check 'lach' in suppression comment"
expect_out_lacks "first 7"
expect_out_lacks "first 8 comb-loop"
expect_out_has "second 0 config "
expect_out_has "[lint] unknown key 'selct'"
expect_out_has "second 8 comb-loop"
