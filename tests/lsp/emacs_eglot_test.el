;;; emacs_eglot_test.el --- quill lsp through eglot, after the README set-up  -*- lexical-binding: t; -*-
(load (expand-file-name "emacs_eglot_test_helpers.el" (file-name-directory (or load-file-name buffer-file-name))))
(setq quill-test-name "emacs eglot test")

;; Started from the constraint file, as in the issue.
(find-file (expand-file-name "pins.xdc" quill-test-dir))
(unless (eq major-mode 'tcl-mode) (quill-fail ".xdc opens in %s" major-mode))
(apply #'eglot (eglot--guess-contact))
(quill-wait (lambda () (eglot-current-server)) "the server")
(let ((tokens (quill-request :textDocument/semanticTokens/full (list :textDocument (eglot--TextDocumentIdentifier)))))
  (when (zerop (length (plist-get tokens :data))) (quill-fail "no semantic tokens for the .xdc file")))

;; The same server formats a .v buffer although it was started for Tcl.
(find-file (expand-file-name "messy.v" quill-test-dir))
(unless (eq major-mode 'verilog-mode) (quill-fail "messy.v opens in %s" major-mode))
(quill-wait (lambda () (eglot-managed-p)) "eglot to manage messy.v")
(eglot-format-buffer)
(let ((expected (with-temp-buffer (insert-file-contents (getenv "QUILL_MESSY_EXPECTED")) (buffer-string))))
  (unless (equal (buffer-string) expected) (quill-fail "formatting gave:\n%s" (buffer-string))))

(find-file (expand-file-name "top.v" quill-test-dir))
(quill-wait (lambda () (eglot-managed-p)) "eglot to manage top.v")
(let ((outline (quill-request :textDocument/documentSymbol (list :textDocument (eglot--TextDocumentIdentifier)))))
  (unless (and (= (length outline) 1) (equal (plist-get (aref outline 0) :name) "top")
               (= (length (plist-get (aref outline 0) :children)) 4))
    (quill-fail "outline %S" outline)))

;; Definition across files through xref, once the index holds counter.v.
(goto-char (point-min))
(forward-line 2)
(forward-char 4)
(let (definitions)
  (quill-wait (lambda ()
                (setq definitions (xref-backend-definitions 'eglot (xref-backend-identifier-at-point 'eglot)))
                definitions)
              "a definition")
  (let ((file (xref-location-group (xref-item-location (car definitions)))))
    (unless (string-match-p "rtl/counter\\.v\\'" file) (quill-fail "definition in %s" file))))

(let* ((hover (quill-request :textDocument/hover (quill-position-params 2 4)))
       (value (plist-get (plist-get hover :contents) :value)))
  (unless (and value (string-match-p (regexp-quote "output reg [W-1:0] q") value)) (quill-fail "hover %S" hover)))

(goto-char (point-min))
(forward-line 1)
(forward-char 14)
(let ((references (xref-backend-references 'eglot (xref-backend-identifier-at-point 'eglot))))
  (unless (= (length references) 3) (quill-fail "%d references" (length references))))

(find-file (expand-file-name "rtl/counter.v" quill-test-dir))
(quill-wait (lambda () (eglot-managed-p)) "eglot to manage counter.v")
(let ((folds (quill-request :textDocument/foldingRange (list :textDocument (eglot--TextDocumentIdentifier)))))
  (unless (= (length folds) 3) (quill-fail "folding %S" folds)))

;; No diagnostics in the request: the server lints the text itself.
(let* ((actions (quill-request :textDocument/codeAction
                               (list :textDocument (eglot--TextDocumentIdentifier)
                                     :range (list :start (list :line 6 :character 0) :end (list :line 6 :character 0))
                                     :context (list :diagnostics []))))
       (fix (seq-find (lambda (a) (equal (plist-get a :title) "Use '<=' in this sequential block")) actions)))
  (unless fix (quill-fail "no quick fix in %S" actions))
  (eglot--apply-workspace-edit (plist-get fix :edit))
  (goto-char (point-min))
  (forward-line 7)
  (let ((line (buffer-substring (line-beginning-position) (line-end-position))))
    (unless (equal line "    q <= q + 1;") (quill-fail "after the fix: %s" line))))

(message "emacs eglot: .xdc and .v share one server; formatting, outline, definition, hover, references, folding, code action passed")
(let ((server (eglot-current-server))) (when server (eglot-shutdown server)))
(kill-emacs 0)
