/* A simulated SATA drive below the guest's own SCSI disk driver, by the kernel's target framework (target_core_user and
 * tcm_loop): each SCSI command to /dev/sdX is answered here, so that drivetemp and ATA commands through SG_IO see a drive
 * whose data, delays and errors a scenario chooses.
 *
 * usage: ata-drive NAME &    (in the guest, as root; /dev/sdX appears)
 * Settings are lines of /run/ata-drive.NAME, read before every ATA command and inquiry:
 *   temp N        raw value of the temperature attribute, 45 unless set
 *   attr N        its identifier: 194 unless set, 0 for none
 *   life N        an attribute 231 before it, with this value both raw and normalised
 *   rotation N    word 217: 7200 unless set, 1 for no moving parts
 *   model TEXT    serial TEXT
 *   nosmart 1     word 82 says that there is no SMART        smartoff 1     word 85 says that it is switched off
 *   badsum 1      the checksum of the SMART data is wrong    readfail 1     reading it is refused
 *   statusfail 1  RETURN STATUS is refused                   short N        only N bytes of data come
 *   standby 1     spun down; reading SMART data spins it up  delay MS       before each ATA command
 *   hang 1        no answer to any ATA command
 * /run/ata-drive.NAME.count tells how many there were: "identify N smart N status N power N switches N wakes N". */
#include <errno.h>
#include <fcntl.h>
#include <linux/target_core_user.h>
#include <poll.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

enum { block = 512, most_data = 1 << 20 };
enum { good = 0, check_condition = 2, no_answer = -1 };

static const char *name = "a";
static char settings_path[64], count_path[80];

static struct {
    int temp, attr, life, rotation, nosmart, smartoff, badsum, readfail, statusfail, shortness, standby, delay, hang;
    char model[41], serial[21];
} set;
static struct {
    int identify, smart, status, power, switches, wakes;
} count;
static int was_standby, is_awake; /* a drive that was spun up stays so until it is set to standby anew */

static void read_settings(void) {
    memset(&set, 0, sizeof set);
    set.temp = 45, set.attr = 194, set.rotation = 7200;
    snprintf(set.model, sizeof set.model, "TEST SATA DRIVE");
    snprintf(set.serial, sizeof set.serial, "DRIVE-%.12s", name);
    const struct {
        const char *word;
        int *number;
    } numbers[] = {
        {"temp", &set.temp},         {"attr", &set.attr},         {"life", &set.life},
        {"rotation", &set.rotation}, {"nosmart", &set.nosmart},   {"smartoff", &set.smartoff},
        {"badsum", &set.badsum},     {"readfail", &set.readfail}, {"statusfail", &set.statusfail},
        {"short", &set.shortness},   {"standby", &set.standby},   {"delay", &set.delay},
        {"hang", &set.hang},
    };
    FILE *file = fopen(settings_path, "r");
    for (char line[128]; file && fgets(line, sizeof line, file);) {
        char *value = strchr(line, ' ');
        if (!value) continue;
        *value++ = 0, value[strcspn(value, "\n")] = 0;
        for (unsigned i = 0; i < sizeof numbers / sizeof *numbers; i++)
            if (!strcmp(line, numbers[i].word)) *numbers[i].number = atoi(value);
        if (!strcmp(line, "model")) snprintf(set.model, sizeof set.model, "%.40s", value);
        if (!strcmp(line, "serial")) snprintf(set.serial, sizeof set.serial, "%.20s", value);
    }
    if (file) fclose(file);
    if (!set.standby || !was_standby) is_awake = !set.standby;
    was_standby = set.standby;
}

static void write_count(void) {
    FILE *file = fopen(count_path, "w");
    if (!file) return;
    fprintf(file, "identify %d smart %d status %d power %d switches %d wakes %d\n", count.identify, count.smart,
            count.status, count.power, count.switches, count.wakes);
    fclose(file);
}

static void spin_up(void) {
    if (!is_awake) count.wakes++;
    is_awake = 1;
}

/* The drive's data. */

static void put_word(uint8_t *data, int word, unsigned value) { data[2 * word] = value, data[2 * word + 1] = value >> 8; }

static void put_text(uint8_t *data, int word, size_t length, const char *text) {
    for (size_t i = 0; i < length; i++) data[2 * word + (i ^ 1)] = i < strlen(text) ? text[i] : ' ';
}

static void seal(uint8_t *data) {
    uint8_t sum = 0;
    for (int i = 0; i < block - 1; i++) sum += data[i];
    data[block - 1] = -sum;
}

static void identify(uint8_t *data) {
    memset(data, 0, block);
    put_word(data, 0, 0x0040), put_word(data, 49, 0x0f00), put_word(data, 53, 6), put_word(data, 61, 2);
    put_text(data, 10, 20, set.serial), put_text(data, 23, 8, "1.0"), put_text(data, 27, 40, set.model);
    put_word(data, 80, 0x07f0), put_word(data, 83, 0x7400), put_word(data, 84, 0x4023);
    put_word(data, 82, 0x0060 | !set.nosmart);
    put_word(data, 85, 0x0060 | (!set.nosmart && !set.smartoff));
    put_word(data, 86, 0x3400), put_word(data, 87, 0x4023);
    put_word(data, 101, 2), put_word(data, 217, set.rotation), put_word(data, 222, 0x107f);
    data[510] = 0xa5, seal(data);
}

static void smart_data(uint8_t *data) {
    memset(data, 0, block);
    const int identifiers[] = {1, 9, set.life ? 231 : 0, set.attr}, values[] = {0, 1000, set.life, set.temp};
    data[0] = 16;
    for (int i = 0, place = 0; i < 4; i++) {
        if (!identifiers[i]) continue;
        uint8_t *entry = data + 2 + 12 * place++;
        entry[0] = identifiers[i], entry[1] = 0x22, entry[3] = entry[4] = identifiers[i] == 231 ? set.life : 100;
        entry[5] = values[i], entry[6] = values[i] >> 8;
    }
    seal(data);
    if (set.badsum) data[block - 1] ^= 0x55;
}

/* SCSI: each of these returns the status, with sense data in s and `*length` bytes in d. */

static int refused(uint8_t *s, int key, int code) {
    memset(s, 0, 18), s[0] = 0x70, s[2] = key, s[7] = 10, s[12] = code;
    return check_condition;
}

static int registers(uint8_t *s, int key, int error, int sectors, int middle, int high, int status) {
    memset(s, 0, 22);
    s[0] = 0x72, s[1] = key, s[2] = key == 1 ? 0 : 0x20, s[3] = key == 1 ? 0x1d : 0, s[7] = 14;
    s[8] = 9, s[9] = 12, s[11] = error, s[13] = sectors, s[17] = middle, s[19] = high, s[21] = status;
    return check_condition;
}

static int inquiry(const uint8_t *c, uint8_t *d, int *length, uint8_t *s) {
    static const uint8_t pages[] = {0, 0, 0, 4, 0, 0x80, 0x83, 0x89};
    char text[41];
    read_settings();
    memset(d, 0, 572);
    if (!(c[1] & 1)) {
        d[2] = 5, d[3] = 2, d[4] = 91, *length = 96;
        snprintf(text, sizeof text, "%-16.16s", set.model);
        memcpy(d + 8, "ATA     ", 8), memcpy(d + 16, text, 16), memcpy(d + 32, "1.0 ", 4);
        return good;
    }
    switch (d[1] = c[2]) {
        case 0: memcpy(d, pages, sizeof pages), *length = sizeof pages; return good;
        case 0x80:
            snprintf(text, sizeof text, "%20s", set.serial);
            d[3] = 20, memcpy(d + 4, text, 20), *length = 24;
            return good;
        case 0x83: d[3] = 12, d[4] = 1, d[5] = 3, d[7] = 8, d[8] = 0x50, d[15] = name[0], *length = 16; return good;
        case 0x89:
            d[2] = 568 >> 8, d[3] = 568 & 255, d[36] = 0x34, d[38] = 1, d[56] = 0xec, *length = 572;
            memcpy(d + 8, "linux   libata          3.00", 28), identify(d + 60);
            return good;
    }
    return refused(s, 5, 0x24);
}

static int smart_command(int feature, uint8_t *d, int *length, uint8_t *s) {
    switch (feature) {
        case 0xd0:
            count.smart++, spin_up();
            if (set.readfail) break;
            smart_data(d), *length = block;
            return good;
        case 0xda:
            count.status++;
            if (set.statusfail) break;
            return registers(s, 1, 0, 0, 0x4f, 0xc2, 0x50);
        case 0xd2: case 0xd8: case 0xd9: count.switches++; return registers(s, 1, 0, 0, 0x4f, 0xc2, 0x50);
    }
    return registers(s, 0xb, 4, 0, 0x4f, 0xc2, 0x51);
}

static int ata_command(const uint8_t *c, uint8_t *d, int *length, uint8_t *s) {
    const int is_long = c[0] == 0x85, feature = is_long ? c[4] : c[3], operation = is_long ? c[14] : c[9];
    int status = good;
    read_settings();
    if (set.hang) return no_answer;
    if (set.delay) usleep(set.delay * 1000);
    if (operation == 0xec)
        count.identify++, identify(d), *length = block;
    else if (operation == 0xe5)
        count.power++, status = registers(s, 1, 0, is_awake ? 0xff : 0, 0, 0, 0x50);
    else if (operation == 0xb0 && !set.nosmart)
        status = smart_command(feature, d, length, s);
    else
        status = registers(s, 0xb, 4, 0, 0, 0, 0x51);
    if (set.shortness && *length > set.shortness) *length = set.shortness;
    return status;
}

static int media_read(uint8_t *d, int *length, int blocks) {
    spin_up();
    *length = blocks * block < most_data ? blocks * block : most_data;
    memset(d, 0, *length);
    return good;
}

static int scsi_command(const uint8_t *c, uint8_t *d, int *length, uint8_t *s) {
    *length = 0;
    switch (c[0]) {
        case 0x00: case 0x1b: case 0x1e: case 0x35: case 0x91: return good;
        case 0x12: return inquiry(c, d, length, s);
        case 0x1a: memset(d, 0, 4), d[0] = 3, *length = 4; return good;
        case 0x5a: memset(d, 0, 8), d[1] = 6, *length = 8; return good;
        case 0x25: memset(d, 0, 8), d[1] = 1, d[2] = d[3] = 0xff, d[6] = 2, *length = 8; return good;
        case 0x9e: memset(d, 0, 32), d[5] = 1, d[6] = d[7] = 0xff, d[10] = 2, *length = 32; return good;
        case 0x08: return media_read(d, length, c[4] ? c[4] : 256);
        case 0x28: return media_read(d, length, c[7] << 8 | c[8]);
        case 0x88: return media_read(d, length, c[12] << 8 | c[13]);
        case 0x0a: case 0x2a: case 0x8a: spin_up(); return good;
        case 0x85: case 0xa1: return ata_command(c, d, length, s);
    }
    return refused(s, 5, 0x20);
}

/* The kernel's side. */

static int write_file(const char *path, const char *text) {
    int file = open(path, O_WRONLY), result = file < 0 ? -1 : (int)write(file, text, strlen(text));
    if (result < 0) fprintf(stderr, "ata-drive: %s: %s\n", path, strerror(errno));
    if (file >= 0) close(file);
    return result;
}

/* Makes the target's device; its descriptor, and the size of what is shared with the kernel. */
static int open_target(const char *folder, unsigned long *size) {
    char path[256], line[128], wanted[128];
    mkdir("/sys/kernel/config/target", 0755), mkdir("/sys/kernel/config/target/core/user_0", 0755), mkdir(folder, 0755);
    snprintf(path, sizeof path, "%s/control", folder);
    write_file(path, "dev_config=drive"), write_file(path, "dev_size=67108864"), write_file(path, "hw_block_size=512");
    write_file(path, "nl_reply_supported=-1");
    snprintf(path, sizeof path, "%s/enable", folder);
    if (write_file(path, "1") < 0) return -1;
    snprintf(wanted, sizeof wanted, "tcm-user/0/%s/drive", name);
    for (int i = 0; i < 64; i++) {
        snprintf(path, sizeof path, "/sys/class/uio/uio%d/name", i);
        FILE *file = fopen(path, "r");
        if (!file) continue;
        line[0] = 0;
        const int is_it = fgets(line, sizeof line, file) && (line[strcspn(line, "\n")] = 0, !strcmp(line, wanted));
        fclose(file);
        if (!is_it) continue;
        snprintf(path, sizeof path, "/sys/class/uio/uio%d/maps/map0/size", i);
        file = fopen(path, "r");
        const int has_size = file && fscanf(file, "%lx", size) == 1;
        if (file) fclose(file);
        snprintf(path, sizeof path, "/dev/uio%d", i);
        return has_size ? open(path, O_RDWR) : -1;
    }
    return -1;
}

/* Gives the device a SCSI host of its own, in a child: adding it sends the first commands. */
static void attach(const char *folder) {
    if (fork()) return;
    char path[256], port[256];
    snprintf(port, sizeof port, "/sys/kernel/config/target/loopback");
    mkdir(port, 0755);
    snprintf(port, sizeof port, "/sys/kernel/config/target/loopback/naa.500140500000%02x00", name[0]);
    mkdir(port, 0755), strcat(port, "/tpgt_1"), mkdir(port, 0755);
    snprintf(path, sizeof path, "%.200s/nexus", port), write_file(path, "naa.5001405100000001");
    snprintf(path, sizeof path, "%.200s/lun/lun_0", port), mkdir(path, 0755);
    strcat(path, "/d");
    if (symlink(folder, path)) perror(path);
    _exit(0);
}

static void answer(struct tcmu_mailbox *box, struct tcmu_cmd_entry *entry, uint8_t *data) {
    uint8_t bytes[32] = {0}, sense[96] = {0};
    int length = 0;
    memcpy(bytes, (char *)box + entry->req.cdb_off, 16);
    const int status = scsi_command(bytes, data, &length, sense);
    write_count();
    if (status == no_answer)
        for (;;) pause();
    int left = length;
    for (unsigned i = 0; i < entry->req.iov_cnt && left > 0; i++) {
        const struct iovec room = entry->req.iov[i];
        const int part = (int)room.iov_len < left ? (int)room.iov_len : left;
        memcpy((char *)box + (size_t)room.iov_base, data + length - left, part), left -= part;
    }
    memset(&entry->rsp, 0, sizeof entry->rsp);
    entry->rsp.scsi_status = status;
    if (status == check_condition) memcpy(entry->rsp.sense_buffer, sense, sizeof sense);
    if (box->flags & TCMU_MAILBOX_FLAG_CAP_READ_LEN)
        entry->rsp.read_len = length, entry->hdr.uflags |= TCMU_UFLAG_READ_LEN;
}

int main(int argc, char **argv) {
    static uint8_t data[most_data];
    char folder[128];
    unsigned long size = 0;
    if (argc > 1) name = argv[1];
    snprintf(settings_path, sizeof settings_path, "/run/ata-drive.%s", name);
    snprintf(count_path, sizeof count_path, "%s.count", settings_path);
    snprintf(folder, sizeof folder, "/sys/kernel/config/target/core/user_0/%s", name);
    read_settings();
    const int device = open_target(folder, &size);
    struct tcmu_mailbox *box = device < 0 ? MAP_FAILED : mmap(0, size, PROT_READ | PROT_WRITE, MAP_SHARED, device, 0);
    if (box == MAP_FAILED) {
        fprintf(stderr, "ata-drive: no device\n");
        return 1;
    }
    attach(folder);
    for (;;) {
        struct pollfd waiting = {device, POLLIN, 0};
        uint32_t events = 0;
        poll(&waiting, 1, -1);
        if (read(device, &events, sizeof events) != sizeof events) continue;
        while (box->cmd_tail != box->cmd_head) {
            struct tcmu_cmd_entry *entry = (void *)((char *)box + box->cmdr_off + box->cmd_tail);
            if (tcmu_hdr_get_op(entry->hdr.len_op) == TCMU_OP_CMD) answer(box, entry, data);
            __sync_synchronize();
            box->cmd_tail = (box->cmd_tail + tcmu_hdr_get_len(entry->hdr.len_op)) % box->cmdr_size;
        }
        events = 0;
        if (write(device, &events, sizeof events) != sizeof events) perror("ata-drive");
    }
}
