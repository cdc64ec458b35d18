;;; emacs_eglot_test_helpers.el --- what the eglot editor tests share  -*- lexical-binding: t; -*-
;; The workspace folder from QUILL_TEST_DIR as the project, without asking;
;; failing with a message; waiting; raw requests; positions.
(require 'eglot)
(require 'xref)
(require 'verilog-mode)

(defvar quill-test-dir (file-name-as-directory (getenv "QUILL_TEST_DIR")))
(defvar quill-test-name "emacs eglot test")
(setq project-find-functions (list (lambda (_dir) (cons 'transient quill-test-dir))))
(setq eglot-sync-connect t eglot-autoreconnect nil)

(defun quill-fail (format-string &rest args)
  (message "%s failed: %s" quill-test-name (apply #'format format-string args))
  (kill-emacs 1))

(defun quill-wait (predicate what)
  (let ((deadline (+ (float-time) 30)))
    (while (and (not (funcall predicate)) (< (float-time) deadline))
      (accept-process-output nil 0.1))
    (unless (funcall predicate) (quill-fail "timed out waiting for %s" what))))

(defun quill-request (method params)
  (jsonrpc-request (eglot--current-server-or-lose) method params))

(defun quill-position-params (line character)
  (list :textDocument (eglot--TextDocumentIdentifier) :position (list :line line :character character)))

(provide 'emacs_eglot_test_helpers)
