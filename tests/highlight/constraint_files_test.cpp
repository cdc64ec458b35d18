// Whole constraint files and Tcl scripts, line by line with the class of
// every byte under each line (notation in class_notation.h).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "class_notation.h"

namespace quill::test {
namespace {

// Classifies the lines joined by LF as one text and compares line by line.
void ExpectLineClasses(const std::vector<AnnotatedLine>& lines) {
  const std::string text = JoinText(lines);
  const std::string classes = Classes(text);
  ASSERT_EQ(classes.size(), text.size());
  std::size_t start = 0;
  for (std::size_t k = 0; k < lines.size(); ++k) {
    ASSERT_EQ(lines[k].text.size(), lines[k].classes.size()) << "malformed line " << k;
    EXPECT_EQ(classes.substr(start, lines[k].text.size()), lines[k].classes) << "line " << k << ": " << lines[k].text;
    start += lines[k].text.size();
    if (k + 1 < lines.size()) {
      EXPECT_EQ(classes[start], lines[k].lineFeed) << "line feed after line " << k;
      ++start;
    }
  }
}

// The same file with CR LF line ends: a CR takes the class of a comment that
// runs into it, or of a string that spans it, and is Plain otherwise.
void ExpectCrLfClasses(const std::vector<AnnotatedLine>& lines) {
  std::string text;
  std::string expected;
  for (std::size_t k = 0; k < lines.size(); ++k) {
    text += lines[k].text;
    expected += lines[k].classes;
    if (k + 1 < lines.size()) {
      text += "\r\n";
      const bool inComment = !lines[k].classes.empty() && lines[k].classes.back() == 'c';
      expected += inComment ? 'c' : lines[k].lineFeed;
      expected += lines[k].lineFeed;
    }
  }
  EXPECT_EQ(Classes(text), expected);
}

// Rows keep each line and its classes in aligned columns.
// clang-format off
// Pin constraints with properties, I/O standards, package pins and ports.
const std::vector<AnnotatedLine> kPinConstraints = {
    {"## Clock signal",
     "ccccccccccccccc"},
    {"set_property -dict { PACKAGE_PIN W5   IOSTANDARD LVCMOS33 } [get_ports clk]",
     "KKKKKKKKKKKK.KKKKK.b.PPPPPPPPPPP.NN...PPPPPPPPPP.IIIIIIII.b..KKKKKKKKK.ppp."},
    {"create_clock -add -name sys_clk_pin -period 10.00 -waveform {0 5} [get_ports clk]",
     "KKKKKKKKKKKK......KKKKK.............KKKKKKK.......KKKKKKKKK.b...b..KKKKKKKKK.ppp."},
    {"",
     ""},
    {"## Switches",
     "ccccccccccc"},
    {"set_property PACKAGE_PIN V17 [get_ports {sw[0]}]",
     "KKKKKKKKKKKK.PPPPPPPPPPP.NNN..KKKKKKKKK.bpppppb."},
    {"set_property IOSTANDARD LVCMOS33 [get_ports {sw[0]}]",
     "KKKKKKKKKKKK.PPPPPPPPPP.IIIIIIII..KKKKKKKKK.bpppppb."},
    {"set_property -dict { PACKAGE_PIN U16 IOSTANDARD LVCMOS33 } [get_ports { led[0] }]; # LD0",
     "KKKKKKKKKKKK.KKKKK.b.PPPPPPPPPPP.NNN.PPPPPPPPPP.IIIIIIII.b..KKKKKKKKK.b.pppppp.b...ccccc"},
    {"set_property -dict {PACKAGE_PIN E3 IOSTANDARD LVCMOS33} [get_ports { CLK100MHZ }]; #IO_L12P_T1 Sch=gclk[100]",
     "KKKKKKKKKKKK.KKKKK.bPPPPPPPPPPP.NN.PPPPPPPPPP.IIIIIIIIb..KKKKKKKKK.b.ppppppppp.b...ccccccccccccccccccccccccc"},
    {"set_property PULLUP true [get_ports btnC]",
     "KKKKKKKKKKKK.PPPPPP.......KKKKKKKKK.pppp."},
    {"set_property DRIVE 12 [get_ports {uart_tx}]",
     "KKKKKKKKKKKK.PPPPP.....KKKKKKKKK.bpppppppb."},
    {"set_property SLEW FAST [get_ports {JA[1]}]",
     "KKKKKKKKKKKK.PPPP.......KKKKKKKKK.bpppppb."},
    {"set_property CONFIG_VOLTAGE 3.3 [current_design]",
     "KKKKKKKKKKKK.PPPPPPPPPPPPPP....................."},
    {"set_property CFGBVS VCC [current_design]",
     "KKKKKKKKKKKK.PPPPPP....................."},
    {"set_property BITSTREAM.GENERAL.COMPRESS TRUE [current_design]",
     "KKKKKKKKKKKK.PPPPPPPPP......................................."},
    {"set_property BITSTREAM.CONFIG.SPI_BUSWIDTH 4 [current_design]",
     "KKKKKKKKKKKK.PPPPPPPPP......................................."},
    {"set_property CONFIG_MODE SPIx4 [current_design]",
     "KKKKKKKKKKKK.PPPPPPPPPPP......................."},
    {R"(set_property PACKAGE_PIN AB12 [get_ports "rst_n"])",
     R"(KKKKKKKKKKKK.PPPPPPPPPPP.NNNN..KKKKKKKKK.sssssss.)"},
    {"set_property IOSTANDARD DIFF_SSTL15 [get_ports {ddr_ck_p ddr_ck_n}]",
     "KKKKKKKKKKKK.PPPPPPPPPP.IIIIIIIIIII..KKKKKKKKK.bpppppppp.........b."},
    {"set_property IN_TERM UNTUNED_SPLIT_50 [get_ports {adc_d*}]",
     "KKKKKKKKKKKK.PPPPPPP...................KKKKKKKKK.bppppp.b."},
    {"set_property DIFF_TERM TRUE [get_ports sys_clk_p] ;# 100 MHz",
     "KKKKKKKKKKKK.PPPPPPPPP.......KKKKKKKKK.ppppppppp...ccccccccc"},
    {"set_property PACKAGE_PIN PIN_A5 [get_ports {btn[3]}] ;# second board",
     "KKKKKKKKKKKK.PPPPPPPPPPP.NNNNNN..KKKKKKKKK.bppppppb...cccccccccccccc"},
    {"set_property -dict { PACKAGE_PIN AA10 IOSTANDARD HSTL_I_18 } [get_ports {data[12] data[13]}]",
     "KKKKKKKKKKKK.KKKKK.b.PPPPPPPPPPP.NNNN.PPPPPPPPPP.IIIIIIIII.b..KKKKKKKKK.bpppppppp.........b."},
    {"set_property PULLDOWN TRUE [get_ports -of_objects [get_nets n1]]",
     "KKKKKKKKKKKK.PPPPPPPP.......KKKKKKKKK.ppppppppppp..KKKKKKKK....."},
    {"get_ports {a b} ; set_property INTERNAL_VREF 0.75 [get_iobanks 34]",
     "KKKKKKKKK.bp.pb...KKKKKKKKKKKK.PPPPPPPPPPPPP......................"},
};

// Timing constraints: clocks, delays, exceptions and timing commands.
const std::vector<AnnotatedLine> kTimingConstraints = {
    {"# Timing constraints for the UART core",
     "cccccccccccccccccccccccccccccccccccccc"},
    {"create_clock -name clk -period 8.000 -waveform {0.000 4.000} [get_ports clk]",
     "KKKKKKKKKKKK.KKKKK.....KKKKKKK.......KKKKKKKKK.b...........b..KKKKKKKKK.ppp."},
    {"create_generated_clock -name clk_div2 -source [get_pins pll/CLKOUT0] -divide_by 2 [get_pins div/q_reg/Q]",
     "KKKKKKKKKKKKKKKKKKKKKK.KKKKK...................KKKKKKKK............................KKKKKKKK............."},
    {"set_clock_groups -asynchronous -group [get_clocks clk] -group [get_clocks clk_div2]",
     "KKKKKKKKKKKKKKKK..................................................................."},
    {"set_input_delay -clock clk -max 2.5 [get_ports {rx din[*]}]",
     "KKKKKKKKKKKKKKK......................KKKKKKKKK.bpp.......b."},
    {"set_output_delay -clock [get_clocks clk] -min -0.5 [get_ports tx]",
     "KKKKKKKKKKKKKKKK....................................KKKKKKKKK.pp."},
    {"set_false_path -from [get_ports rst_n] -to [all_registers]",
     "KKKKKKKKKKKKKK.KKKKK..KKKKKKKKK.ppppp..KKK................"},
    {"set_multicycle_path 2 -setup -from [get_cells a_reg*] -to [get_cells b_reg*]",
     "KKKKKKKKKKKKKKKKKKK..........KKKKK..KKKKKKKKK.........KKK..KKKKKKKKK........"},
    {"set_max_delay 5.0 -from [get_pins -hierarchical *sync1*/C] -datapath_only",
     "KKKKKKKKKKKKK.....KKKKK..KKKKKKKK.KKKKKKKKKKKKK.........................."},
    {"set_min_delay -1.0 -to [get_nets {n[7]}]",
     "KKKKKKKKKKKKK......KKK..KKKKKKKK.b....b."},
    {"set_clock_uncertainty 0.15 [get_clocks clk]",
     "TTTTTTTTTTTTTTTTTTTTT......................"},
    {"set_clock_latency -source 1.2 [get_clocks clk]",
     "TTTTTTTTTTTTTTTTT............................."},
    {"set_case_analysis 0 [get_ports test_mode]",
     "TTTTTTTTTTTTTTTTT....KKKKKKKKK.ppppppppp."},
    {"set_disable_timing -from A -to Z [get_cells mux0]",
     "TTTTTTTTTTTTTTTTTT.KKKKK...KKK....KKKKKKKKK......"},
    {"set_load 0.05 [all_outputs]",
     "TTTTTTTT..................."},
    {"set_max_fanout 20 [current_design]",
     "TTTTTTTTTTTTTT...................."},
};

// Assignment lines: global, location and instance assignments.
const std::vector<AnnotatedLine> kAssignmentFile = {
    {"# Pin assignments for the DE0-Nano board",
     "cccccccccccccccccccccccccccccccccccccccc"},
    {R"(set_global_assignment -name FAMILY "Cyclone IV E")",
     R"(......................KKKKK........ssssssssssssss)"},
    {"set_global_assignment -name DEVICE EP4CE22F17C6",
     "......................KKKKK...................."},
    {"set_global_assignment -name TOP_LEVEL_ENTITY top",
     "......................KKKKK....................."},
    {"set_location_assignment PIN_R8 -to CLOCK_50",
     "KKKKKKKKKKKKKKKKKKKKKKK.NNNNNN.KKK........."},
    {"set_location_assignment PIN_A15 -to LED[0]",
     "KKKKKKKKKKKKKKKKKKKKKKK.NNNNNNN.KKK......."},
    {R"(set_location_assignment PIN_J15 -to KEY\[0\])",
     R"(KKKKKKKKKKKKKKKKKKKKKKK.NNNNNNN.KKK.........)"},
    {R"(set_instance_assignment -name IO_STANDARD "3.3-V LVTTL" -to LED[0])",
     R"(KKKKKKKKKKKKKKKKKKKKKKK.KKKKK.............sssssssssssss.KKK.......)"},
    {"set_instance_assignment -name IO_STANDARD LVDS -to adc_clk",
     "KKKKKKKKKKKKKKKKKKKKKKK.KKKKK..................KKK........"},
    {R"(set_instance_assignment -name CURRENT_STRENGTH_NEW "MAXIMUM CURRENT" -to SDRAM_DQ[15])",
     R"(KKKKKKKKKKKKKKKKKKKKKKK.KKKKK......................sssssssssssssssss.KKK.............)"},
    {"set_global_assignment -name SDC_FILE top.sdc",
     "......................KKKKK................."},
    {"set_global_assignment -name VERILOG_FILE rtl/top.v",
     "......................KKKKK......................."},
    {R"(set_instance_assignment -name IO_STANDARD "2.5 V" -to HSMC_CLKIN0 -entity top)",
     R"(KKKKKKKKKKKKKKKKKKKKKKK.KKKKK.............sssssss.KKK........................)"},
    {"set_location_assignment PIN_AB3 -to hsmc_d[0]",
     "KKKKKKKKKKKKKKKKKKKKKKK.NNNNNNN.KKK.........."},
    {R"(set_instance_assignment -name IO_STANDARD "SSTL-15 CLASS I" -to DDR3_DQ[0] -tag __hps_sdram_p0)",
     R"(KKKKKKKKKKKKKKKKKKKKKKK.KKKKK.............sssssssssssssssss.KKK...............................)"},
    {"set_location_assignment IOBANK_3A -to io_bank",
     "KKKKKKKKKKKKKKKKKKKKKKK...........KKK........"},
};

// A compile flow script of flow commands.
const std::vector<AnnotatedLine> kCompileFlowScript = {
    {"# Compile flow: synthesis, fitting and timing analysis",
     "cccccccccccccccccccccccccccccccccccccccccccccccccccccc"},
    {"load_package flow",
     "................."},
    {"project_open -revision top top",
     "FFFFFFFFFFFF.................."},
    {"set_global_assignment -name NUM_PARALLEL_PROCESSORS 2",
     "......................KKKKK.........................."},
    {"execute_module -tool map",
     "FFFFFFFFFFFFFF.........."},
    {"execute_module -tool fit",
     "FFFFFFFFFFFFFF.........."},
    {R"(execute_module -tool sta -args "--do_report_timing")",
     R"(FFFFFFFFFFFFFF.................ssssssssssssssssssss)"},
    {"execute_flow -compile",
     "FFFFFFFFFFFF........."},
    {"create_timing_netlist",
     "FFFFFFFFFFFFFFFFFFFFF"},
    {"read_sdc_file top.sdc",
     "FFFFFFFFFFFFF........"},
    {"update_timing_netlist",
     "FFFFFFFFFFFFFFFFFFFFF"},
    {R"(report_timing -setup -npaths 10 -file "setup.rpt")",
     R"(TTTTTTTTTTTTT.........................sssssssssss)"},
    {"report_fitter",
     "FFFFFFFFFFFFF"},
    {"report_area",
     "FFFFFFFFFFF"},
    {"report_power",
     "TTTTTTTTTTTT"},
    {"delete_timing_netlist",
     "FFFFFFFFFFFFFFFFFFFFF"},
    {"export_assignments",
     "FFFFFFFFFFFFFFFFFF"},
    {"project_revisions",
     "FFFFFFFFFFFFFFFFF"},
    {"compile ; project_close",
     "FFFFFFF...FFFFFFFFFFFFF"},
    {"project_new -overwrite demo",
     "FFFFFFFFFFF................"},
};

// A non-project build script with procedures and control flow.
const std::vector<AnnotatedLine> kBuildScript = {
    {"# Non-project build script",
     "cccccccccccccccccccccccccc"},
    {R"(set proj_name "blinky")",
     R"(..............ssssssss)"},
    {"set part xc7a35tcpg236-1",
     "........................"},
    {"proc add_sources {dir} {",
     "KKKK.............b...b.b"},
    {"    foreach f [glob -nocomplain $dir/*.v] {",
     "....KKKKKKK...............................b"},
    {"        read_verilog $f",
     "......................."},
    {"    }",
     "....b"},
    {"    return [llength [glob -nocomplain $dir/*.v]]",
     "....KKKKKK..KKKKKKK............................."},
    {"}",
     "b"},
    {"create_project -force $proj_name ./build -part $part",
     "TTTTTTTTTTTTTT......................................"},
    {"add_files -fileset sources_1 [glob ./rtl/*.v]",
     "TTTTTTTTT...................................."},
    {"read_xdc ./constraints/basys3.xdc",
     "................................."},
    {"set_property top blinky [current_fileset]",
     "KKKKKKKKKKKK............................."},
    {"update_compile_order -fileset sources_1",
     "TTTTTTTTTTTTTTTTTTTT..................."},
    {"synth_design -top blinky -part $part",
     "TTTTTTTTTTTT........................"},
    {"opt_design",
     "TTTTTTTTTT"},
    {"place_design",
     "TTTTTTTTTTTT"},
    {"route_design",
     "TTTTTTTTTTTT"},
    {"report_timing_summary -file timing.rpt",
     "TTTTTTTTTTTTTTTTTTTTT................."},
    {"report_utilization -file util.rpt",
     "TTTTTTTTTTTTTTTTTT..............."},
    {R"(if {[string match "*VIOLATED*" [report_timing -return_string]]} {)",
     R"(KK.b.KKKKKK.......ssssssssssss..TTTTTTTTTTTTT.................b.b)"},
    {R"(    puts "Timing failed")",
     R"(....KKKK.sssssssssssssss)"},
    {"    exit 1",
     ".........."},
    {"} elseif {$argc > 0} {",
     "b.KKKKKK.b.........b.b"},
    {"    incr count",
     "....KKKK......"},
    {"} else {",
     "b.KKKK.b"},
    {"    write_bitstream -force blinky.bit",
     "....TTTTTTTTTTTTTTT.................."},
    {"}",
     "b"},
    {"write_checkpoint -force post_route.dcp",
     "TTTTTTTTTTTTTTTT......................"},
    {"launch_runs impl_1 -to_step write_bitstream -jobs 2",
     "TTTTTTTTTTT.................TTTTTTTTTTTTTTT........"},
    {"wait_on_run impl_1",
     "TTTTTTTTTTT......."},
    {"open_hw_manager",
     "TTTTTTTTTTTTTTT"},
    {"connect_hw_server",
     "TTTTTTTTTTTTTTTTT"},
    {"open_hw_target",
     "TTTTTTTTTTTTTT"},
    {"set_property PROGRAM.FILE {blinky.bit} [current_hw_device]",
     "KKKKKKKKKKKK..............b..........b..TTTTTTTTTTTTTTTTT."},
    {"program_hw_device [current_hw_device]",
     "TTTTTTTTTTTTTTTTT..TTTTTTTTTTTTTTTTT."},
    {"close_project",
     "TTTTTTTTTTTTT"},
};

// Plain Tcl: namespaces, procedures, lists, control words and a multi-line string.
const std::vector<AnnotatedLine> kTclUtilities = {
    {"namespace eval ::util {",
     "KKKKKKKKK.............b"},
    {"    variable count 0",
     "...................."},
    {"}",
     "b"},
    {"proc ::util::log {msg} {",
     "KKKK.............b...b.b"},
    {"    global verbose",
     "....KKKKKK........"},
    {"    upvar 1 lvl level",
     "....KKKKK............"},
    {R"(    if {$verbose} { puts stderr "\[$level\] $msg" })",
     R"(....KK.b........b.b.KKKK........sssssssssssssssss.b)"},
    {"}",
     "b"},
    {"set ports [list clk rst_n {led[0]}]",
     "...........KKKK...........b......b."},
    {"foreach p $ports { lappend names [lindex $p 0] }",
     "KKKKKKK..........b.KKKKKKK........KKKKKK.......b"},
    {"set n [expr {[llength $names] * 2}]",
     ".......KKKK.b.KKKKKKK............b."},
    {"dict set cfg part xc7",
     "KKKK................."},
    {"array set opts {-jobs 4}",
     "KKKKK..........b.......b"},
    {"switch -exact -- $mode { fast { set jobs 8 } default { set jobs 2 } }",
     "KKKKKK.................b......b............b.KKKKKKK.b............b.b"},
    {"while {$i < 10} { incr i; if {$i == 5} break else continue }",
     "KKKKK.b.......b.b.KKKK....KK.b.......b.KKKKK.KKKK.KKKKKKKK.b"},
    {R"(set fh [open "out.txt" w]; puts $fh [format "%d ports" $n]; close $fh)",
     R"(........KKKK.sssssssss.....KKKK......KKKKKK.ssssssssss......KKKKK....)"},
    {"source ./scripts/common.tcl",
     "KKKKKK....................."},
    {"package require Tcl 8.5",
     "KKKKKKK.KKKKKKK........"},
    {R"(set s "multi)",
     R"(......ssssss)", 's'},
    {R"(line string with # and {" ; read $fh)",
     R"(sssssssssssssssssssssssss...KKKK....)"},
    {"info exists ::env(HOME) ; append s x ; gets stdin ; write",
     "KKKK......................KKKKKK.......KKKK.........KKKKK"},
    {"namespace eval ns { provide x } ; break ; continue",
     "KKKKKKKKK.........b.KKKKKKK...b...KKKKK...KKKKKKKK"},
};

// clang-format on

struct FileCase {
  const char* name;
  const std::vector<AnnotatedLine>* lines;
};

void PrintTo(const FileCase& row, std::ostream* os) {
  *os << row.name;
}

class ConstraintFileTest : public ::testing::TestWithParam<FileCase> {};

TEST_P(ConstraintFileTest, ClassifiesEveryLine) {
  ExpectLineClasses(*GetParam().lines);
}

TEST_P(ConstraintFileTest, CarriageReturnsDoNotChangeClasses) {
  ExpectCrLfClasses(*GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    Files, ConstraintFileTest,
    ::testing::Values(FileCase{"PinConstraints", &kPinConstraints}, FileCase{"TimingConstraints", &kTimingConstraints},
                      FileCase{"AssignmentFile", &kAssignmentFile}, FileCase{"CompileFlowScript", &kCompileFlowScript},
                      FileCase{"BuildScript", &kBuildScript}, FileCase{"TclUtilities", &kTclUtilities}),
    [](const ::testing::TestParamInfo<FileCase>& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace quill::test
