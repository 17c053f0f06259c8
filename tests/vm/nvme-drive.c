/* A simulated NVMe drive below the guest's own NVMe driver: a controller that answers on the loopback network (NVMe
 * over TCP) with a temperature, delays and refusals that a scenario chooses. It has no namespace.
 *
 * usage: nvme-drive &    (in the guest; then the driver is told to connect to 127.0.0.1, port 4420)
 * Settings are lines of /run/nvme-drive, read before every command:
 *   kelvin N      what its log tells as its temperature, 0 for none; 318 unless set, which is 45 °C
 *   refuse 1      it refuses to give its log                delay MS      before it gives its log
 *   model TEXT    serial TEXT
 * /run/nvme-drive.count tells how often its log was asked for. */
#include <arpa/inet.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <unistd.h>

enum { header_size = 8, command_size = 64, answer_size = 16, page = 4096 };
enum { initialize = 0, initialize_answer = 1, command_unit = 4, answer_unit = 5, data_unit = 7 };
enum { no_answer = -1, done = 0, invalid_opcode = 0x4001, invalid_field = 0x4002 };

static struct {
    int kelvin, refuse, delay;
    char model[41], serial[21];
} set;
static int logs;
static uint32_t configuration; /* whether the driver has switched the controller on */

static void read_settings(void) {
    memset(&set, 0, sizeof set);
    set.kelvin = 318;
    strcpy(set.model, "TEST NVME DRIVE"), strcpy(set.serial, "NVME-a");
    FILE *file = fopen("/run/nvme-drive", "r");
    for (char line[128]; file && fgets(line, sizeof line, file);) {
        char *value = strchr(line, ' ');
        if (!value) continue;
        *value++ = 0, value[strcspn(value, "\n")] = 0;
        if (!strcmp(line, "kelvin")) set.kelvin = atoi(value);
        if (!strcmp(line, "refuse")) set.refuse = atoi(value);
        if (!strcmp(line, "delay")) set.delay = atoi(value);
        if (!strcmp(line, "model")) snprintf(set.model, sizeof set.model, "%.40s", value);
        if (!strcmp(line, "serial")) snprintf(set.serial, sizeof set.serial, "%.20s", value);
    }
    if (file) fclose(file);
}

static void count_log(void) {
    FILE *file = fopen("/run/nvme-drive.count", "w");
    if (!file) return;
    fprintf(file, "logs %d\n", ++logs);
    fclose(file);
}

static uint32_t number_at(const uint8_t *bytes, int size) {
    uint32_t number = 0;
    while (size-- > 0) number = number << 8 | bytes[size];
    return number;
}
static void put(uint8_t *bytes, int size, uint64_t number) {
    for (int i = 0; i < size; i++) bytes[i] = number >> 8 * i;
}
static void put_text(uint8_t *bytes, size_t size, const char *text) {
    for (size_t i = 0; i < size; i++) bytes[i] = i < strlen(text) ? text[i] : ' ';
}

/* Commands: each returns the status, with data in d and what the answer carries in `*result`. */

static int property(const uint8_t *c, uint64_t *result) {
    const uint32_t offset = number_at(c + 44, 4);
    const int is_setting = c[4] == 0;
    if (is_setting) {
        if (offset == 0x14) configuration = number_at(c + 48, 4);
        return done;
    }
    switch (offset) {
        case 0x00: *result = 1ULL << 37 | 0x14ULL << 24 | 1 << 16 | 127; return done; /* what it can do */
        case 0x08: *result = 0x00010400; return done;                                /* version 1.4 */
        case 0x14: *result = configuration; return done;
        case 0x1c: *result = configuration & 0x4000 ? 0x9 : configuration & 1; return done; /* ready, or shut down */
    }
    return invalid_field;
}

static int identify(const uint8_t *c, uint8_t *d) {
    memset(d, 0, page);
    if (c[40] == 2) return done; /* the list of namespaces: empty */
    if (c[40] != 1) return invalid_field;
    put_text(d + 4, 20, set.serial), put_text(d + 24, 40, set.model), put_text(d + 64, 8, "1.0");
    put(d + 78, 2, 1), put(d + 80, 4, 0x00010400), d[111] = 1, put(d + 266, 2, 343), put(d + 268, 2, 363);
    put(d + 320, 2, 10), d[512] = 0x66, d[513] = 0x44, put(d + 514, 2, 64), put(d + 516, 4, 1);
    put(d + 536, 4, 1);
    strcpy((char *)d + 768, "nqn.2020-01.test:drive");
    put(d + 1792, 4, 4), put(d + 1796, 4, 1);
    return done;
}

static int log_page(const uint8_t *c, uint8_t *d) {
    memset(d, 0, page);
    if (c[40] != 2) return invalid_field;
    count_log();
    if (set.delay) usleep(set.delay * 1000);
    if (set.refuse) return invalid_field;
    put(d + 1, 2, set.kelvin), d[3] = 100, d[4] = 10;
    return done;
}

static int command(const uint8_t *c, uint8_t *d, uint32_t *length, uint64_t *result) {
    read_settings();
    switch (c[0]) {
        case 0x7f: /* of the network kind: connect, or a register */
            if (c[4] == 1) return *result = 1, done;
            return property(c, result);
        case 0x06: *length = page; return identify(c, d);
        case 0x02: {
            const uint32_t wanted = (number_at(c + 42, 2) + 1) * 4;
            *length = wanted < page ? wanted : page;
            return log_page(c, d);
        }
        case 0x09: return done;      /* set features: as many queues as there must be */
        case 0x0a: return done;      /* get features */
        case 0x0c: return no_answer; /* tell of an event: there are none */
        case 0x18: return done;      /* keep alive */
    }
    return invalid_opcode;
}

/* The transport. */

static int receive(int peer, void *bytes, size_t size) {
    for (size_t got = 0; got < size;) {
        const ssize_t part = read(peer, (char *)bytes + got, size - got);
        if (part <= 0) return 0;
        got += part;
    }
    return 1;
}
static int send_unit(int peer, int kind, int flags, int header, uint8_t *unit, uint32_t size) {
    unit[0] = kind, unit[1] = flags, unit[2] = header, unit[3] = kind == data_unit ? header : 0;
    put(unit + 4, 4, size);
    for (uint32_t sent = 0; sent < size;) {
        const ssize_t part = write(peer, unit + sent, size - sent);
        if (part <= 0) return 0;
        sent += part;
    }
    return 1;
}

static int serve_command(int peer, const uint8_t *c) {
    static uint8_t unit[24 + page], answer[header_size + answer_size];
    uint32_t length = 0;
    uint64_t result = 0;
    memset(unit, 0, 24);
    const int status = command(c, unit + 24, &length, &result);
    if (status == no_answer) return 1;
    if (status == done && length) {
        memcpy(unit + 8, c + 2, 2), put(unit + 16, 4, length);
        if (!send_unit(peer, data_unit, 4, 24, unit, 24 + length)) return 0;
    }
    memset(answer, 0, sizeof answer);
    put(answer + 8, 8, result), memcpy(answer + 20, c + 2, 2), put(answer + 22, 2, status << 1);
    return send_unit(peer, answer_unit, 0, sizeof answer, answer, sizeof answer);
}

/* One queue of the driver's: it has one for commands to the controller, and one for data that it never uses, each with
 * a connection and a process of its own. */
static void serve(int peer) {
    static uint8_t unit[2 * page];
    while (receive(peer, unit, header_size)) {
        const uint32_t size = number_at(unit + 4, 4);
        if (size < header_size || size > sizeof unit || !receive(peer, unit + header_size, size - header_size)) return;
        if (unit[0] == initialize) {
            memset(unit, 0, 128);
            put(unit + 12, 4, 1 << 16);
            if (!send_unit(peer, initialize_answer, 0, 128, unit, 128)) return;
        } else if (unit[0] == command_unit && size >= header_size + command_size) {
            uint8_t c[command_size];
            memcpy(c, unit + header_size, sizeof c);
            if (!serve_command(peer, c)) return;
        }
    }
}

int main(void) {
    const int on = 1, listener = socket(AF_INET, SOCK_STREAM, 0);
    struct sockaddr_in address = {.sin_family = AF_INET, .sin_port = htons(4420)};
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (bind(listener, (struct sockaddr *)&address, sizeof address) || listen(listener, 8))
        return perror("nvme-drive"), 1;
    for (;;) {
        const int peer = accept(listener, 0, 0);
        if (peer >= 0 && !fork()) return serve(peer), 0;
        if (peer >= 0) close(peer);
    }
}
