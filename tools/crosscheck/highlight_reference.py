"""A plain Python model of quill's constraint and Tcl byte classifier (export x4b7d).

Classify(data) returns one class byte per input byte, as the engine writes them into its output buffer.
Written for cross-checking: it follows the classifier's rules one step at a time, without shortcuts.
"""

kPlain = 0
kComment = 1
kString = 2
kKeyword = 3
kProperty = 4
kIoStandard = 5
kPinName = 6
kPortName = 7
kBrace = 8
kToolCommand = 9
kFlowCommand = 10

kConstraintKeywords = [
    "set_property", "get_ports", "get_pins", "get_nets", "get_cells", "create_clock", "create_generated_clock",
    "set_clock_groups", "set_input_delay", "set_output_delay", "set_false_path", "set_multicycle_path",
    "set_max_delay", "set_min_delay", "-dict", "-period", "-name", "-waveform", "-from", "-to", "-of_objects",
    "-filter", "-hierarchical", "set_pin_assignment", "set_location_assignment", "set_instance_assignment",
    "set_inst_assignment", "IO_LOC", "IO_PORT", "IO_TYPE", "LOCATION", "proc", "return", "if", "else", "elseif",
    "while", "for", "foreach", "break", "continue", "switch", "default", "global", "upvar", "namespace", "package",
    "require", "provide", "source", "puts", "gets", "open", "close", "read", "write", "string", "list", "append",
    "lappend", "lindex", "llength", "array", "dict", "info", "expr", "incr", "format",
]
kToolCommands = [
    "synth_design", "opt_design", "place_design", "route_design", "write_bitstream", "write_debug_probes",
    "write_cfgmem", "report_timing_summary", "report_timing", "report_clocks", "report_clock_networks",
    "report_clock_interaction", "report_utilization", "report_power", "report_drc", "report_methodology",
    "set_case_analysis", "set_disable_timing", "set_clock_latency", "set_clock_uncertainty", "set_data_check",
    "set_max_fanout", "set_max_transition", "set_max_capacitance", "set_resistance", "set_load", "set_drive",
    "create_ip", "generate_target", "upgrade_ip", "get_ips", "get_property", "launch_simulation", "close_sim",
    "open_wave", "add_wave", "run", "restart", "relaunch_sim", "open_run", "close_design", "open_checkpoint",
    "save_checkpoint", "write_checkpoint", "read_checkpoint", "open_hw_manager", "connect_hw_server",
    "open_hw_target", "current_hw_device", "program_hw_device", "create_hw_cfgmem", "program_hw_cfgmem",
    "reset_run", "launch_runs", "wait_on_run", "create_project", "open_project", "close_project", "add_files",
    "remove_files", "import_files", "set_top", "update_compile_order", "reset_project",
]
kFlowCommands = [
    "project_new", "project_open", "project_close", "project_revisions", "execute_flow", "execute_module",
    "compile", "set_location_assignment", "set_instance_assignment", "set_input_delay", "set_output_delay",
    "create_timing_netlist", "report_timing", "update_timing_netlist", "delete_timing_netlist", "report_area",
    "report_power", "report_fitter", "export_assignments", "read_sdc_file",
]
kPinProperties = [
    "PACKAGE_PIN", "IOSTANDARD", "SLEW", "DRIVE", "PULLUP", "PULLDOWN", "PULLMODE", "DIFF_TERM", "IN_TERM",
    "OUT_TERM", "INTERNAL_VREF", "CONFIG_VOLTAGE", "CFGBVS", "CONFIG_MODE", "BITSTREAM",
]
kIoStandardPrefixes = [
    "LVCMOS", "LVDS", "LVTTL", "SSTL", "HSTL", "HSUL", "PCI", "TMDS", "BLVDS", "RSDS", "SLVS", "SUB_LVDS",
    "MINI_LVDS", "DIFF_SSTL", "DIFF_HSTL", "POD", "MOBILE_DDR", "LVDCI", "HSLVDCI",
]


def BuildWordSet(entries):
    return set(entry.lower().encode() for entry in entries)


# Lookups in order; the first set holding the word decides its class.
kWordSets = [
    (BuildWordSet(kConstraintKeywords), kKeyword),
    (BuildWordSet(kToolCommands), kToolCommand),
    (BuildWordSet(kFlowCommands), kFlowCommand),
    (BuildWordSet(kPinProperties), kProperty),
]
kPrefixes = [prefix.encode() for prefix in kIoStandardPrefixes]

# Character tests of the C library in the "C" locale (ASCII only).


def IsSpace(c):
    return c in (0x20, 0x09, 0x0A, 0x0B, 0x0C, 0x0D)


def IsAlpha(c):
    return 0x41 <= c <= 0x5A or 0x61 <= c <= 0x7A


def IsDigit(c):
    return 0x30 <= c <= 0x39


def IsAlnum(c):
    return IsAlpha(c) or IsDigit(c)


def IsUpper(c):
    return 0x41 <= c <= 0x5A


def IsWordByte(c):
    return IsAlnum(c) or c == ord("_")


def ToLower(data):
    return bytes(c + 32 if IsUpper(c) else c for c in data)


def Mark(out, begin, end, cls):
    for k in range(begin, end):
        out[k] = cls


def IoStandardRunEnd(data, start):
    """End of the letter/digit/underscore run at start if an I/O-standard prefix matches there, else None."""
    n = len(data)
    runEnd = start
    while runEnd < n and IsWordByte(data[runEnd]):
        runEnd += 1
    for prefix in kPrefixes:
        if start + len(prefix) > n:
            continue
        if ToLower(data[start:start + len(prefix)]) != prefix.lower():
            continue
        if runEnd - start >= len(prefix) + 1:
            return runEnd
    return None


def IsPinName(data, start, end):
    n = len(data)
    k = start
    if n - start >= 4 and data[start:start + 4] == b"PIN_":
        k += 4
    letters = 0
    while letters < 3 and k < n and IsUpper(data[k]):
        k += 1
        letters += 1
    if letters == 0:
        return False
    digits = 0
    while digits < 3 and k < n and IsDigit(data[k]):
        k += 1
        digits += 1
    if digits == 0:
        return False
    if k < n and IsWordByte(data[k]):
        return False
    return k == end


def ClassifyWord(data, start, end, out):
    lower = ToLower(data[start:end])
    for words, cls in kWordSets:
        if lower in words:
            Mark(out, start, end, cls)
            return
    runEnd = IoStandardRunEnd(data, start)
    if runEnd is not None and runEnd == end:
        Mark(out, start, end, kIoStandard)
        return
    if IsPinName(data, start, end):
        Mark(out, start, end, kPinName)


def Classify(data):
    data = bytes(data)
    n = len(data)
    out = bytearray(n)
    state = 0
    i = 0
    while i < n:
        c = data[i]
        if c >= 128:
            i += 1
            while i < n and (data[i] & 0xC0) == 0x80:
                i += 1
            continue
        if c == ord("#"):
            j = i
            while j < n and data[j] != 0x0A:
                j += 1
            Mark(out, i, j, kComment)
            i = j
            continue
        if c == ord('"'):
            j = i + 1
            while j < n:
                if data[j] == ord("\\"):
                    j += 2
                    continue
                if data[j] == ord('"'):
                    j += 1
                    break
                j += 1
            j = min(j, n)
            Mark(out, i, j, kString)
            i = j
            continue
        if c == ord("{"):
            out[i] = kBrace
            if state == 0:
                k = i - 1
                while k >= 0 and data[k] in (0x20, 0x09):
                    k -= 1
                if k >= 0 and k + 1 >= 9 and ToLower(data[k - 8:k + 1]) == b"get_ports":
                    state = 1
            i += 1
            continue
        if c == ord("}"):
            out[i] = kBrace
            if state == 1:
                state = 0
            i += 1
            continue
        if c == ord("["):
            p = i + 1
            while p < n and data[p] in (0x20, 0x09):
                p += 1
            if (p + 9 <= n and ToLower(data[p:p + 9]) == b"get_ports" and
                    (p + 9 == n or not IsWordByte(data[p + 9]))):
                Mark(out, p, p + 9, kKeyword)
                state = 2
                i = p + 9
            else:
                i += 1
            continue
        if c == ord("]"):
            if state == 2:
                state = 0
            i += 1
            continue
        if IsSpace(c) or c == ord(",") or c == ord(";"):
            i += 1
            continue
        if IsDigit(c):
            while i < n and (IsDigit(data[i]) or data[i] == ord(".")):
                i += 1
            continue
        startsWord = IsAlpha(c) or c == ord("_")
        if c == ord("-") and i + 1 < n and (IsAlpha(data[i + 1]) or data[i + 1] == ord("_")):
            startsWord = True
        if not startsWord:
            i += 1
            continue
        start = i
        j = i + 1
        while j < n and IsWordByte(data[j]):
            j += 1
        if j < n and data[j] == ord("["):
            k = j + 1
            while k < n and IsDigit(data[k]):
                k += 1
            if k > j + 1 and k < n and data[k] == ord("]"):
                j = k + 1
        if state == 1 or state == 2:
            Mark(out, start, j, kPortName)
            if state == 2:
                state = 0
        else:
            ClassifyWord(data, start, j, out)
        i = j
    return bytes(out)
