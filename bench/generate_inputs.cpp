#include "generate_inputs.h"

#include <random>
#include <string_view>

namespace quill::bench {
namespace {

// Raw mt19937 output is the same everywhere (distributions are not).
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : engine_(seed) {}
  std::size_t Below(std::size_t n) { return static_cast<std::size_t>(engine_() % n); }
  template <std::size_t N>
  std::string_view Pick(const std::string_view (&options)[N]) { return options[Below(N)]; }

 private:
  std::mt19937 engine_;
};

constexpr std::string_view kNames[] = {"data", "valid", "ready", "count", "state", "addr", "wdata", "rdata",
                                       "enable", "flag", "result", "acc", "index", "shift", "status", "ctrl"};
constexpr std::string_view kIndents[] = {"", "  ", "    ", "\t", "   "};

std::string Name(Dice& dice, std::size_t unit) {
  return std::string(dice.Pick(kNames)) + "_" + std::to_string(unit) + "_" + std::to_string(dice.Below(64));
}

std::string Range(Dice& dice) {
  switch (dice.Below(4)) {
    case 0: return "";
    case 1: return "[7:0] ";
    case 2: return "[WIDTH-1:0] ";
    default: return "[" + std::to_string(dice.Below(32) + 1) + ":0] ";
  }
}

void AppendModule(std::string& out, Dice& dice, std::size_t unit, std::size_t bodyItems) {
  const std::string module = "unit_" + std::to_string(unit);
  out += "// " + module + ": generated for measurements\n";
  out += "module " + module + " #(\n";
  out += "  parameter WIDTH = " + std::to_string(8 + dice.Below(24)) + ",\n";
  out += "parameter [3:0] MODE=4'h" + std::to_string(dice.Below(10)) + ", // operating mode\n";
  out += "    parameter DEPTH = 16\n) (\n";
  out += "  input wire clk,\n  input wire rst_n, input wire en,\n";
  for (std::size_t p = 0; p < 3 + dice.Below(5); ++p) {
    out += std::string(dice.Pick(kIndents)) + (dice.Below(2) ? "input  wire " : "output reg ") + Range(dice) +
           Name(dice, unit) + ",\n";
  }
  out += "  output wire done // finished\n);\n\n";
  out += "/* state and\n   datapath registers */\n";
  for (std::size_t d = 0; d < 4 + dice.Below(6); ++d) {
    out += std::string(dice.Pick(kIndents)) + (dice.Below(3) ? "reg " : "wire ") + Range(dice) + Name(dice, unit) +
           ";" + (dice.Below(3) == 0 ? " // note" : "") + "\n";
  }
  out += "localparam IDLE = 2'd0;\nlocalparam BUSY=2'd1;\n";
  for (std::size_t item = 0; item < bodyItems; ++item) {
    const std::string a = Name(dice, unit), b = Name(dice, unit), c = Name(dice, unit);
    switch (dice.Below(6)) {
      case 0:
        out += "assign " + a + " = " + b + " & " + c + ";\n";
        break;
      case 1:
        out += "always @(posedge clk or negedge rst_n) begin\nif (!rst_n) begin\n" + a + " <= 0;\nend else if (en) begin\n" +
               a + " <= " + b + " + 1'b1;\nend\nend\n";
        break;
      case 2:
        out += "always @(*) begin\n  case (" + b + ")\n  2'b00: " + a + " = " + c + ";\n  2'b01: begin\n    " + a +
               " = ~" + c + ";\n  end\n  default:\n    " + a + " = 0;\n  endcase\nend\n";
        break;
      case 3:
        out += "sub_block #(.W(WIDTH)) u_" + a + " (\n.clk(clk),\n  .din( " + b + " ), // input\n.dout(" + c +
               ")\n);\n";
        break;
      case 4:
        out += "generate\nif (MODE == 1) begin : g_" + a + "\nalways @(posedge clk) " + a + " <= " + b +
               ";\nend\nendgenerate\n";
        break;
      default:
        out += "// " + a + " follows " + b + "\nalways_comb begin\nif (en) " + a + " = " + b + ";\nelse " + a +
               " = " + c + ";\nend\n";
        break;
    }
  }
  out += "endmodule\n\n";
}

}  // namespace

std::string GenerateVerilog(std::size_t bytes, std::uint32_t seed) {
  Dice dice(seed);
  std::string out;
  out.reserve(bytes + 4096);
  for (std::size_t unit = 0; out.size() < bytes; ++unit) AppendModule(out, dice, unit, 10 + dice.Below(30));
  return out;
}

std::string GenerateModule(std::size_t lines, std::uint32_t seed) {
  Dice dice(seed);
  std::string out;
  // Each body item is about five lines.
  AppendModule(out, dice, 0, lines / 5);
  return out;
}

std::string GenerateConstraints(std::size_t bytes, std::uint32_t seed) {
  constexpr std::string_view kStandards[] = {"LVCMOS33", "LVCMOS18", "LVDS_25", "SSTL15", "HSTL_I"};
  Dice dice(seed);
  std::string out;
  out.reserve(bytes + 1024);
  for (std::size_t i = 0; out.size() < bytes; ++i) {
    const std::string port = std::string(kNames[dice.Below(std::size(kNames))]) + std::to_string(i % 97);
    const std::string pin = std::string(1, static_cast<char>('A' + dice.Below(20))) + std::to_string(dice.Below(20) + 1);
    switch (dice.Below(7)) {
      case 0:
        out += "## " + port + " on bank " + std::to_string(dice.Below(4)) + "\n";
        break;
      case 1:
        out += "set_property -dict { PACKAGE_PIN " + pin + " IOSTANDARD " + std::string(dice.Pick(kStandards)) +
               " } [get_ports { " + port + "[" + std::to_string(dice.Below(8)) + "] }];\n";
        break;
      case 2:
        out += "create_clock -add -name clk_" + port + " -period " + std::to_string(dice.Below(20) + 2) +
               ".000 -waveform {0 5} [get_ports " + port + "]\n";
        break;
      case 3:
        out += "set_input_delay -clock clk_main -max 2.5 [get_ports {" + port + " " + port + "_n}]\n";
        break;
      case 4:
        out += "set_location_assignment PIN_" + pin + " -to " + port + "\n";
        break;
      case 5:
        out += "if {[llength [get_runs impl_1]] > 0} { reset_run impl_1 }\nlaunch_runs impl_1 -jobs 4\n"
               "wait_on_run impl_1\nputs \"built " + port + "\"\n";
        break;
      default:
        out += "synth_design -top top_" + port + " -part xc7a35ticsg324-1L\nopt_design\nplace_design\nroute_design\n";
        break;
    }
  }
  return out;
}

}  // namespace quill::bench
