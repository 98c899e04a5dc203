// The default unit table inside the shared object: the file that the DLL carries as a resource, byte for byte.
    .section .rodata
    .global kelmoUnitTable, kelmoUnitTableEnd
    .hidden kelmoUnitTable, kelmoUnitTableEnd
kelmoUnitTable:
    .incbin "resources/default_unit_table.txt"
kelmoUnitTableEnd:

    .section .note.GNU-stack, "", %progbits  // without it the linker would ask for an executable stack
