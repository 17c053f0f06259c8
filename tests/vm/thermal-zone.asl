// A thermal zone whose temperature, in tenths of a kelvin, stands in the registers at port 0x7100 that
// smc-device.c provides. The guest's program "zone" writes them.
DefinitionBlock ("", "SSDT", 2, "TEST", "ZONE", 0x00000001)
{
    OperationRegion (REGS, SystemIO, 0x7100, 0x02)
    Field (REGS, ByteAcc, NoLock, Preserve) { LOWB, 8, HIGH, 8 }
    Scope (\)
    {
        ThermalZone (TZT0)
        {
            Method (_TMP, 0, Serialized) { Return ((HIGH << 8) | LOWB) }
            Method (_CRT, 0) { Return (65535) }
            Name (_TZP, 0)
        }
    }
}
