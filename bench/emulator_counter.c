/*
 * A plugin for qemu-user that counts the instructions of the emulated processor between the functions measured_run and
 * measurement_ends of one_operation, and writes one line with the count for each such pair to standard error.
 *
 * The declarations are those of the plugin interface of QEMU, version 1, as its documentation gives them: distributions
 * carry no header for it.
 */
#include <inttypes.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

typedef uint64_t qemu_plugin_id_t;
struct qemu_plugin_tb;
struct qemu_plugin_insn;
typedef struct qemu_info_t qemu_info_t;
enum qemu_plugin_cb_flags { QEMU_PLUGIN_CB_NO_REGS };

typedef void (*qemu_plugin_vcpu_tb_trans_cb_t)(qemu_plugin_id_t id, struct qemu_plugin_tb *tb);
typedef void (*qemu_plugin_vcpu_udata_cb_t)(unsigned int vcpu_index, void *userdata);

void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id, qemu_plugin_vcpu_tb_trans_cb_t cb);
void qemu_plugin_register_vcpu_tb_exec_cb(struct qemu_plugin_tb *tb, qemu_plugin_vcpu_udata_cb_t cb,
                                          enum qemu_plugin_cb_flags flags, void *userdata);
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb *tb);
struct qemu_plugin_insn *qemu_plugin_tb_get_insn(const struct qemu_plugin_tb *tb, size_t index);
const char *qemu_plugin_insn_symbol(const struct qemu_plugin_insn *insn);

__attribute__((visibility("default"))) int qemu_plugin_version = 1;
__attribute__((visibility("default"))) int qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t *info, int argc,
                                                               char **argv);

static bool counting;
static uint64_t counted;

static void count_block(unsigned int cpu, void *instructions) {
  (void)cpu;
  if (counting) {
    counted += (uintptr_t)instructions;
  }
}

/* Also entered at the return from the operation into measured_run: that goes on with the count. */
static void begin(unsigned int cpu, void *instructions) {
  if (!counting) {
    counted = 0;
  }
  counting = true;
  count_block(cpu, instructions);
}

/* Blocks between the return of measured_run and here are the caller's: a handful of instructions. */
static void end(unsigned int cpu, void *instructions) {
  (void)cpu;
  (void)instructions;
  if (counting) {
    fprintf(stderr, "counted %" PRIu64 "\n", counted);
  }
  counting = false;
}

static bool is_part_of(const struct qemu_plugin_tb *tb, const char *name) {
  const char *symbol = qemu_plugin_insn_symbol(qemu_plugin_tb_get_insn(tb, 0));
  return symbol != NULL && strcmp(symbol, name) == 0;
}

static void block_translated(qemu_plugin_id_t id, struct qemu_plugin_tb *tb) {
  (void)id;
  void *instructions = (void *)(uintptr_t)qemu_plugin_tb_n_insns(tb);
  if (is_part_of(tb, "measurement_ends")) {
    qemu_plugin_register_vcpu_tb_exec_cb(tb, end, QEMU_PLUGIN_CB_NO_REGS, instructions);
  } else if (is_part_of(tb, "measured_run")) {
    qemu_plugin_register_vcpu_tb_exec_cb(tb, begin, QEMU_PLUGIN_CB_NO_REGS, instructions);
  } else {
    qemu_plugin_register_vcpu_tb_exec_cb(tb, count_block, QEMU_PLUGIN_CB_NO_REGS, instructions);
  }
}

int qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t *info, int argc, char **argv) {
  (void)info;
  (void)argc;
  (void)argv;
  qemu_plugin_register_vcpu_tb_trans_cb(id, block_translated);
  return 0;
}
