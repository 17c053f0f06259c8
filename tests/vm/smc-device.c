/* A simulated System Management Controller inside an unmodified QEMU.
 *
 * Preloaded into qemu-system-x86_64 it puts a device at the ports 0x300-0x31f that speaks the controller's
 * protocol, so that the kernel's own applesmc driver binds to it. It calls only functions that the QEMU
 * program exports, which it does for its own loadable modules.
 *
 * The keys come from the file named by SMC_KEYS, one a line, as `calorivo-cli keys` prints them; without it
 * there is no controller:
 *     TC0P  [sp78]  (bytes 3c 40)
 * The guest changes them by writing lines of text to the ports from 0x7000 on (its program "smc"):
 *     set KEY TYPE HEX...    fail KEY    ok KEY    slow KEY MILLISECONDS
 *     dead (nothing is answered any more)    alive    zero (the counters)
 * and reads four 32-bit counters there: values read, values written, other commands, commands refused.
 *
 * The ports from 0x7100 on are registers without a meaning of their own, for thermal-zone.asl.
 */
#include <signal.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/prctl.h>

/* The part of QEMU's interface that is used. */
typedef struct {
    uint64_t (*read)(void*, uint64_t address, unsigned size);
    void (*write)(void*, uint64_t address, uint64_t value, unsigned size);
    void* with_attributes[2];
    int endianness;
    struct {
        unsigned smallest, largest;
        bool unaligned;
        void* accepts;
    } valid;
    struct {
        unsigned smallest, largest;
        bool unaligned;
    } implemented;
} PortOperations;
typedef struct Notifier {
    void (*notify)(struct Notifier*, void*);
    void* links[2];
} Notifier;
extern void* get_system_io(void) __attribute__((weak));
extern void memory_region_init_io(void*, void*, const PortOperations*, void*, const char*, uint64_t)
    __attribute__((weak));
extern void memory_region_add_subregion_overlap(void*, uint64_t, void*, int) __attribute__((weak));
extern void qemu_add_machine_init_done_notifier(Notifier*) __attribute__((weak));
extern int64_t qemu_clock_get_ns(int clock) __attribute__((weak));
enum { guest_clock = 1 };

enum { most_keys = 2048, most_bytes = 32, key_attributes = 0x80 };
typedef struct {
    char name[5], type[5];
    uint8_t length, bytes[most_bytes];
    bool fails;
    int milliseconds;
} Key;
static Key keys[most_keys];
static uint32_t key_count;
static bool is_dead;
enum { values_read, values_written, other_commands, commands_refused, counter_count };
static uint32_t counters[counter_count];

static int compare_keys(const void* a, const void* b) {
    return memcmp(((const Key*)a)->name, ((const Key*)b)->name, 4);
}

static Key* find_key(const char* name) {
    for (uint32_t i = 0; i < key_count; i++)
        if (memcmp(keys[i].name, name, 4) == 0) return &keys[i];
    return NULL;
}

static void set_key(const char* name, const char* type, const uint8_t* bytes, int length) {
    Key* key = find_key(name);
    if (!key) {
        if (key_count == most_keys) return;
        key = &keys[key_count++];
        memset(key, 0, sizeof *key);
        memcpy(key->name, name, 4);
    }
    snprintf(key->type, sizeof key->type, "%-4.4s", type);
    key->length = (uint8_t)length;
    memset(key->bytes, 0, most_bytes);
    memcpy(key->bytes, bytes, (size_t)length);
    qsort(keys, key_count, sizeof *keys, compare_keys); /* the driver finds keys by bisection */
}

static void put_big_endian(uint8_t* bytes, uint32_t value) {
    for (int i = 0; i < 4; i++) bytes[i] = (uint8_t)(value >> (24 - 8 * i));
}

static void update_key_count(void) {
    uint8_t bytes[4];
    put_big_endian(bytes, key_count + (find_key("#KEY") ? 0 : 1));
    set_key("#KEY", "ui32", bytes, 4);
}

static int read_hex(const char* text, uint8_t* bytes) {
    int count = 0;
    for (char* end; count < most_bytes; text = end) {
        unsigned long byte = strtoul(text, &end, 16);
        if (end == text) break;
        bytes[count++] = (uint8_t)byte;
    }
    return count;
}

static void load_keys(const char* path) {
    FILE* file = fopen(path, "r");
    if (!file) {
        perror(path);
        exit(1);
    }
    char line[512];
    while (fgets(line, sizeof line, file)) {
        const char *name = line + strspn(line, " "), *type = strchr(name, '[');
        if (!type || strlen(type) < 6 || type - name < 4) continue;
        const char* hex = strstr(type, "(bytes ");
        uint8_t bytes[most_bytes];
        set_key(name, type + 1, bytes, hex ? read_hex(hex + strlen("(bytes "), bytes) : 0);
    }
    fclose(file);
    update_key_count();
}

/* The protocol: a command, four bytes of argument, the length, then as many bytes of data. */
enum { command_read = 0x10, command_write, command_key_at_index, command_key_information };
enum { status_data_waits = 1, status_busy = 4 };
static enum { idle, takes_argument, takes_length, gives_data, takes_data, refused } state;
static uint8_t command, argument[4], argument_size, length, position, data[most_bytes], last_byte;
static int64_t ready_at;

static uint32_t argument_number(void) {
    return (uint32_t)argument[0] << 24 | (uint32_t)argument[1] << 16 | (uint32_t)argument[2] << 8 |
           argument[3];
}

static void give(const void* bytes, size_t size) {
    memset(data, 0, sizeof data);
    memcpy(data, bytes, size);
    position = 0;
    state = length > 0 ? gives_data : idle;
}

static void check_argument(void) {
    const Key* key = find_key((char*)argument);
    bool is_known = command == command_key_at_index ? argument_number() < key_count : key && !key->fails;
    state = is_known ? takes_length : refused;
    if (!is_known) counters[commands_refused]++;
}

static void execute(void) {
    const Key* key = command == command_key_at_index ? &keys[argument_number()] : find_key((char*)argument);
    ready_at = 0;
    if (key->milliseconds) ready_at = qemu_clock_get_ns(guest_clock) + key->milliseconds * INT64_C(1000000);
    counters[command == command_read    ? values_read
             : command == command_write ? values_written
                                        : other_commands]++;
    if (command == command_read) {
        give(key->bytes, most_bytes);
    } else if (command == command_key_at_index) {
        give(key->name, 4);
    } else if (command == command_key_information) {
        uint8_t information[6] = {key->length};
        memcpy(information + 1, key->type, 4);
        information[5] = key_attributes;
        give(information, sizeof information);
    } else {
        position = 0;
        state = length > 0 ? takes_data : idle;
    }
}

static void take_byte(uint8_t byte) {
    if (state == takes_argument) {
        argument[argument_size++] = byte;
        if (argument_size == sizeof argument) check_argument();
    } else if (state == takes_length) {
        length = byte < most_bytes ? byte : most_bytes;
        execute();
    } else if (state == takes_data) {
        find_key((char*)argument)->bytes[position++] = byte;
        if (position == length) state = idle;
    }
}

static uint8_t status(void) {
    if (state == idle || state == refused) return 0;
    bool is_ready = state == gives_data && qemu_clock_get_ns(guest_clock) >= ready_at;
    return is_ready ? status_busy | status_data_waits : status_busy;
}

enum { data_port = 0, command_port = 4 };

static uint64_t read_controller(void* self, uint64_t port, unsigned size) {
    (void)self, (void)size;
    if (is_dead) return 0xff;
    if (port == command_port) return status();
    if (port != data_port) return 0;
    if (state == gives_data) {
        last_byte = data[position++];
        if (position == length) state = idle;
    }
    return last_byte;
}

static void write_controller(void* self, uint64_t port, uint64_t value, unsigned size) {
    (void)self, (void)size;
    if (is_dead) return;
    if (port == data_port) return take_byte((uint8_t)value);
    if (port != command_port) return;
    if (state != idle && state != refused) { /* a command in the middle of another one only ends that one */
        state = idle;
        return;
    }
    command = (uint8_t)value;
    argument_size = 0;
    state = command >= command_read && command <= command_key_information ? takes_argument : refused;
}

static void obey(const char* line) {
    char order[16] = "", name[16] = "", type[16] = "";
    int rest = 0;
    if (sscanf(line, "%15s %15s %n", order, name, &rest) < 1) return;
    Key* key = strlen(name) == 4 ? find_key(name) : NULL;
    if (strcmp(order, "zero") == 0) {
        memset(counters, 0, sizeof counters);
    } else if (strcmp(order, "dead") == 0) {
        is_dead = true;
    } else if (strcmp(order, "alive") == 0) {
        is_dead = false;
        state = idle;
    } else if (strcmp(order, "set") == 0 && strlen(name) == 4) {
        uint8_t bytes[most_bytes];
        int used = 0;
        if (sscanf(line + rest, "%4s %n", type, &used) < 1) return;
        set_key(name, type, bytes, read_hex(line + rest + used, bytes));
        update_key_count();
    } else if (key && strcmp(order, "fail") == 0) {
        key->fails = true;
    } else if (key && strcmp(order, "ok") == 0) {
        key->fails = false;
        key->milliseconds = 0;
    } else if (key && strcmp(order, "slow") == 0) {
        key->milliseconds = atoi(line + rest);
    }
}

static uint64_t read_control(void* self, uint64_t port, unsigned size) {
    (void)self, (void)size;
    return port < sizeof counters ? counters[port / 4] >> (port % 4 * 8) & 0xff : 0;
}

static void write_control(void* self, uint64_t port, uint64_t value, unsigned size) {
    static char line[256];
    static size_t used;
    (void)self, (void)port, (void)size;
    if (value != '\n') {
        if (used < sizeof line - 1) line[used++] = (char)value;
        return;
    }
    line[used] = 0;
    used = 0;
    obey(line);
}

static uint8_t registers[256] = {0xb8, 0x0b}; /* 300.0 kelvin */

static uint64_t read_register(void* self, uint64_t port, unsigned size) {
    (void)self, (void)size;
    return registers[port];
}

static void write_register(void* self, uint64_t port, uint64_t value, unsigned size) {
    (void)self, (void)size;
    registers[port] = (uint8_t)value;
}

static void add_ports(const PortOperations* operations, const char* name, uint64_t first, uint64_t count) {
    enum {
        region_size = 8192,
        above_others = 10
    }; /* larger than QEMU's structure, whose size is not known */
    void* region = calloc(1, region_size);
    memory_region_init_io(region, NULL, operations, NULL, name, count);
    memory_region_add_subregion_overlap(get_system_io(), first, region, above_others);
}

#define BYTE_PORTS(read_, write_)                                                                    \
    {                                                                                                \
        .read = read_, .write = write_, .valid = {1, 1, false, NULL}, .implemented = { 1, 1, false } \
    }
static const PortOperations controller_ports = BYTE_PORTS(read_controller, write_controller);
static const PortOperations control_ports = BYTE_PORTS(read_control, write_control);
static const PortOperations register_ports = BYTE_PORTS(read_register, write_register);

static void machine_is_ready(Notifier* notifier, void* data_) {
    (void)notifier, (void)data_;
    const char* path = getenv("SMC_KEYS");
    if (path) {
        load_keys(path);
        add_ports(&controller_ports, "smc", 0x300, 0x20);
    }
    add_ports(&control_ports, "smc-control", 0x7000, 0x100);
    add_ports(&register_ports, "registers", 0x7100, sizeof registers);
}

__attribute__((constructor)) static void start(void) {
    static Notifier notifier = {.notify = machine_is_ready};
    /* Loaded into any other program, such as a shell on the way to QEMU, it does nothing. */
    if (!qemu_add_machine_init_done_notifier || !get_system_io) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL); /* the guest does not outlive the test that started it */
    qemu_add_machine_init_done_notifier(&notifier);
}
