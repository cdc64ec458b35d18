;;; emacs_eglot_corpus_test.el --- quill lsp through eglot on corpus files  -*- lexical-binding: t; -*-
;; The olofk-serv project of the corpus, read only: outline, definition from
;; an instance to its module in another file, hover, references, folding and
;; a code action. Nothing is saved.
(load (expand-file-name "emacs_eglot_test_helpers.el" (file-name-directory (or load-file-name buffer-file-name))))
(setq quill-test-name "emacs eglot corpus test")

(find-file (expand-file-name "rtl/serv_top.v" quill-test-dir))
(unless (eq major-mode 'verilog-mode) (quill-fail "serv_top.v opens in %s" major-mode))
(apply #'eglot (eglot--guess-contact))
(quill-wait (lambda () (eglot-managed-p)) "eglot to manage serv_top.v")

(let ((outline (quill-request :textDocument/documentSymbol (list :textDocument (eglot--TextDocumentIdentifier)))))
  (unless (and (= (length outline) 1) (equal (plist-get (aref outline 0) :name) "serv_top")
               (seq-find (lambda (child) (equal (plist-get child :name) "alu"))
                         (plist-get (aref outline 0) :children)))
    (quill-fail "outline %S" outline)))

;; "   serv_alu #(.W (W)) alu" on line 463: through xref to rtl/serv_alu.v.
(goto-char (point-min))
(forward-line 462)
(forward-char 5)
(let (definitions)
  (quill-wait (lambda ()
                (setq definitions (xref-backend-definitions 'eglot (xref-backend-identifier-at-point 'eglot)))
                definitions)
              "a definition")
  (let ((file (xref-location-group (xref-item-location (car definitions)))))
    (unless (string-match-p "rtl/serv_alu\\.v\\'" file) (quill-fail "definition in %s" file))))

(let* ((hover (quill-request :textDocument/hover (quill-position-params 462 5)))
       (value (plist-get (plist-get hover :contents) :value)))
  (unless (and value (string-match-p (regexp-quote "module serv_alu") value)) (quill-fail "hover %S" hover)))

(let ((references (xref-backend-references 'eglot (xref-backend-identifier-at-point 'eglot))))
  (unless (seq-find (lambda (item) (string-match-p "serv_top\\.v\\'" (xref-location-group (xref-item-location item))))
                    references)
    (quill-fail "references %S" references)))

(find-file (expand-file-name "rtl/serv_alu.v" quill-test-dir))
(quill-wait (lambda () (eglot-managed-p)) "eglot to manage serv_alu.v")
(let ((folds (quill-request :textDocument/foldingRange (list :textDocument (eglot--TextDocumentIdentifier)))))
  (when (zerop (length folds)) (quill-fail "no folding ranges")))

;; Line 140 of serv_rf_if.v gives a 1-bit output a 5-bit value; the server
;; lints the text itself when the request carries no diagnostics.
(find-file (expand-file-name "rtl/serv_rf_if.v" quill-test-dir))
(quill-wait (lambda () (eglot-managed-p)) "eglot to manage serv_rf_if.v")
(let* ((actions (quill-request :textDocument/codeAction
                               (list :textDocument (eglot--TextDocumentIdentifier)
                                     :range (list :start (list :line 139 :character 0) :end (list :line 139 :character 0))
                                     :context (list :diagnostics []))))
       (disable (seq-find (lambda (a) (equal (plist-get a :title) "Disable width-mismatch on this line")) actions)))
  (unless disable (quill-fail "no code action in %S" actions)))

(message "emacs eglot on corpus files: outline, definition, hover, references, folding, code action passed")
(let ((server (eglot-current-server))) (when server (eglot-shutdown server)))
(kill-emacs 0)
